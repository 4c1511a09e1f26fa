#pragma once

#include <functional>

#include "kernel/common/Reporter.h"
#include "kernel/common/StageProgress.h"

namespace kernel {

using Tell = std::function<void(double)>;

// Runs `work` on a thread of its own, while the calling thread calls `advance` with the share that
// is done, at least every 50 ms. `work` gets a function to which it tells that share; that call
// does not return once `advance` has thrown. What either side throws reaches the caller after the
// thread has ended.
void RunAside(const Tell& advance, const std::function<void(const Tell&)>& work);

// The same with the open stage's progress and the user's stop.
void RunAside(Reporter& reporter, const std::function<void(const Tell&)>& work);
void RunAside(StageProgress& progress, const std::function<void(const Tell&)>& work);

}  // namespace kernel
