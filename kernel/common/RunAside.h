#pragma once

#include <functional>

#include "kernel/common/Reporter.h"

namespace kernel {

// Runs `work` on a thread of its own, while the calling thread keeps the open stage's progress and
// the user's stop going. `work` gets a function to which it tells the share that is done; that call
// does not return once the callback object has thrown. What either side throws reaches the caller
// after the thread has ended.
void RunAside(Reporter& reporter,
              const std::function<void(const std::function<void(double)>&)>& work);

}  // namespace kernel
