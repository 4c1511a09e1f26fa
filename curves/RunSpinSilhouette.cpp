#include "curves/RunSpinSilhouette.h"

#include "curves/CurveXferQZ.h"
#include "curves/RunOnLoadedSurface.h"
#include "platform/IFSpinsil.h"

unsigned char RunSpinSilhouette(const char* inputFile, int mode, const char* outputFile,
                                double distance) {
  UIDialogQZC callbacks;
  ResetAbortState();
  // The channel outlives the kernel that writes into it.
  CurveXferQZ curves(mode, outputFile);
  return RunOnLoadedSurface<IFSpinsil>(inputFile, &callbacks,
                                       [&](IFSpinsil& kernel) { kernel.Run(&curves, distance); });
}
