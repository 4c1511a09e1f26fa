#pragma once

#include <memory>
#include <new>

#include "callbacks/RunFlags.h"
#include "callbacks/UIDialogQZC.h"
#include "callbacks/UIExceptionQZC.h"
#include "stock/LoadBinarySurface.h"

/// What the spun silhouette and the offset share: makes a kernel object, plays the surface file
/// into its input channel and calls run(kernel). The kernel object is gone at the end.
///
/// 1 when the kernel has run; also when there was no memory for it and nothing was done, and when
/// it reported a fatal error. 0 when the file does not load. After the user's stop it tells where
/// that came: 0 before the file was loaded, 1 behind. Other exceptions pass through.
template <class Kernel, class Run>
unsigned char RunOnLoadedSurface(const char* inputFile, UIDialogQZC* callbacks, Run run) {
  std::unique_ptr<Kernel> kernel;
  bool loaded = false;
  try {
    kernel.reset(new (std::nothrow) Kernel(callbacks));
    if (kernel == nullptr) return 1;
    loaded = LoadBinarySurface(inputFile, kernel->OpenInputChannel(), 0, 0, nullptr);
    if (loaded) run(*kernel);
    return loaded ? 1 : 0;
  } catch (const UIExceptionQZC&) {
    // A kernel error counts as a result: whoever calls looks at the output.
    return !CurrentRunFlags().abort || loaded ? 1 : 0;
  }
}
