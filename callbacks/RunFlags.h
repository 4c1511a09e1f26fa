#pragma once

/// What has happened in the kernel run that goes on, or went on last, under a UIDialogQZC. One set
/// for the whole library: a kernel may call back through any copy of its callback object.
struct RunFlags {
  bool abort = false;            // Escape was seen
  bool postPhase = false;        // the kernel has reached its second pass of post-processing
  bool memoryLimit = false;      // the kernel has complained of its memory limit
  bool exceptionRaised = false;  // the run's one UIExceptionQZC is on its way or has been thrown
};

const RunFlags& CurrentRunFlags();

/// Clears all four. Every driver calls it before it makes its kernel object.
void ResetAbortState();

/// Whether the host says that Escape is pressed. If so the abort flag is set; it is never cleared
/// here.
bool PollEscape();

void SetPostPhase();
void SetMemoryLimit();
void SetExceptionRaised();
