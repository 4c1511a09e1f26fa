#pragma once

#include <chrono>
#include <string>

class UIDialog;

namespace kernel {

// Stages and messages of one run on their way to the callback object and to the kernel's log.
// Called on the thread that called the kernel only. Any call may throw what the callback throws.
//
// Progress is the share of the whole run in whole percent: a new percentage is announced with
// CreateProgress(text, percentage); when a tenth of a second passes without one, UpdateProgress
// gives the callback the chance to ask for the user's stop.
class Reporter {
 public:
  // `callbacks` may be null: then only the log hears of the run.
  explicit Reporter(UIDialog* callbacks) : m_callbacks(callbacks) {}

  // Opens a stage that takes the run from `fromPercent` to `toPercent`.
  void BeginStage(const char* text, int fromPercent, int toPercent);
  // `done` of `total` equal shares of the stage are done.
  void Advance(double done, double total);
  void EndStage();

  void Warn(const std::string& message);
  void Fail(const std::string& message);

 private:
  void Announce(int percent);

  UIDialog* m_callbacks;
  std::string m_text;
  int m_from = 0, m_to = 0, m_percent = 0;
  std::chrono::steady_clock::time_point m_last;
};

}  // namespace kernel
