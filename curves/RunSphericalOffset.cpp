#include "curves/RunSphericalOffset.h"

#include "curves/RunOnLoadedSurface.h"
#include "platform/IFSphoffset.h"
#include "stock/SurfaceXferQZ.h"

unsigned char RunSphericalOffset(const char* inputFile, const char* outputFile, double distance,
                                 double unscaledValue) {
  UIDialogQZC callbacks;
  ResetAbortState();
  // The channel outlives the kernel that writes into it.
  SurfaceXferQZ surface(outputFile);
  return RunOnLoadedSurface<IFSphoffset>(inputFile, &callbacks, [&](IFSphoffset& kernel) {
    // The kernel has the distance second.
    kernel.Run(unscaledValue, distance, &surface);
  });
}
