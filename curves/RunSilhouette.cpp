#include "curves/RunSilhouette.h"

#include <memory>
#include <new>

#include "addin/CurrentDirectoryScope.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialogQZC.h"
#include "callbacks/UIExceptionQZC.h"
#include "platform/IFSilhouette.h"
#include "platform/QZCore.h"
#include "platform/files.h"

unsigned char RunSilhouette(char* inputFile, char* outputFile, double distance) {
  UIDialogQZC callbacks;
  // Declared in front of the directory: it is freed behind it.
  std::unique_ptr<IFSilhouette> silhouette;
  const CurrentDirectoryScope inTemporary(GetTempDirectory());
  ResetAbortState();
  silhouette.reset(new (std::nothrow) IFSilhouette);
  // Nothing has failed as far as the host is concerned, although nothing was run.
  if (silhouette == nullptr) return 1;
  try {
    silhouette->Run(inputFile, outputFile, distance, &callbacks);
    return 1;
  } catch (const UIExceptionQZC&) {
    // The user's stop keeps what the kernel has written and is told; a kernel error is told by the
    // missing output alone. The host relies on both.
    if (CurrentRunFlags().abort) return 0;
    if (file_exists(outputFile, 0) != 0) RemoveStdFile(outputFile);
    return 1;
  }
}
