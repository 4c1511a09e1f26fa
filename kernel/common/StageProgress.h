#pragma once

#include <chrono>
#include <string>

#include "kernel/common/Reporter.h"

class UIDialog;

namespace kernel {

// Stages and messages of one run of a class whose dialog shows each stage from 0 to 100 per cent.
// Called on the thread that called the kernel only. Any call may throw what the callback throws.
//
// A dialog may ask for the user's stop only at a stage's first count or when the percentage has
// risen by more than 3 points. Where that takes longer than 0.3 s the stage is announced again
// (ResetWait), which makes the next count a first one.
class StageProgress {
 public:
  // `callbacks` may be null: then only the log hears of the run.
  explicit StageProgress(UIDialog* callbacks) : m_callbacks(callbacks), m_messages(callbacks) {}

  // `text` must outlive the stage.
  void Begin(const char* text);
  // `share` of the stage, 0 to 1, is done. To be called every 50 ms or more often: counts rise
  // even when the share does not, so that the user sees that work goes on.
  void Advance(double share);
  void End();

  void Warn(const std::string& message) { m_messages.Warn(message); }
  void Fail(const std::string& message) { m_messages.Fail(message); }

 private:
  using Clock = std::chrono::steady_clock;

  void Count(int count);

  UIDialog* m_callbacks;
  Reporter m_messages;
  const char* m_text = "";
  int m_count = 0, m_polledCount = 0;
  Clock::time_point m_counted, m_polled;
};

}  // namespace kernel
