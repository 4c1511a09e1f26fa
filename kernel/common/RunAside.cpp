#include "kernel/common/RunAside.h"

#include <atomic>

#include "kernel/common/Workers.h"

namespace kernel {
namespace {

// Ends the work after a stop; the callback object's own exception is the one that the caller sees.
struct Stopped {};

}  // namespace

void RunAside(Reporter& reporter,
              const std::function<void(const std::function<void(double)>&)>& work) {
  std::atomic<double> share{0};
  std::atomic<bool> stopped{false};
  const auto tell = [&](double done) {
    share = done;
    if (stopped) throw Stopped();
  };
  const auto watch = [&](std::size_t finished) {
    try {
      reporter.Advance(finished > 0 ? 1 : share.load(), 1);
    } catch (...) {
      stopped = true;
      throw;
    }
  };
  RunTasks(
      1, [&](std::size_t) { work(tell); }, watch);
}

}  // namespace kernel
