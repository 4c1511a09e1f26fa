#include "kernel/common/RunAside.h"

#include <atomic>

#include "kernel/common/Workers.h"

namespace kernel {
namespace {

// Ends the work after a stop; the callback object's own exception is the one that the caller sees.
struct Stopped {};

}  // namespace

void RunAside(const Tell& advance, const std::function<void(const Tell&)>& work) {
  std::atomic<double> share{0};
  std::atomic<bool> stopped{false};
  const auto tell = [&](double done) {
    share = done;
    if (stopped) throw Stopped();
  };
  const auto watch = [&](std::size_t finished) {
    try {
      advance(finished > 0 ? 1 : share.load());
    } catch (...) {
      stopped = true;
      throw;
    }
  };
  RunTasks(
      1, [&](std::size_t) { work(tell); }, watch);
}

void RunAside(Reporter& reporter, const std::function<void(const Tell&)>& work) {
  RunAside([&](double share) { reporter.Advance(share, 1); }, work);
}

void RunAside(StageProgress& progress, const std::function<void(const Tell&)>& work) {
  RunAside([&](double share) { progress.Advance(share); }, work);
}

}  // namespace kernel
