#include "callbacks/RunFlags.h"

#include "platform/HostExecutable.h"

namespace {

constexpr short kEscape = 27;

RunFlags g_flags;

}  // namespace

const RunFlags& CurrentRunFlags() { return g_flags; }

void ResetAbortState() { g_flags = {}; }

bool PollEscape() {
  const bool pressed = KeyPress(kEscape);
  if (pressed) g_flags.abort = true;
  return pressed;
}

void SetPostPhase() { g_flags.postPhase = true; }

void SetMemoryLimit() { g_flags.memoryLimit = true; }

void SetExceptionRaised() { g_flags.exceptionRaised = true; }
