#pragma once

#include <chrono>
#include <limits>

#include "callbacks/UIDialog.h"

/// Takes the time of counts, and of the way out after a stop.
class CountTimes final : public UIDialog {
 public:
  struct Stop {};

  void SetProgress(int count) override;
  void EndProgress() override { m_inStage = false; }
  void ErrorMessage(const char* message, bool fatal) override;

  /// Throws Stop at this count of the run.
  long stopAt = std::numeric_limits<long>::max();
  long counts = 0;
  bool failed = false;
  double longestBetween = 0;  // seconds from one count of a stage to its next

  double SecondsSinceLast() const;

 private:
  std::chrono::steady_clock::time_point m_last;
  bool m_inStage = false;
};
