#include "CountTimes.h"

#include <algorithm>
#include <cstdio>

void CountTimes::SetProgress(int) {
  if (m_inStage) longestBetween = std::max(longestBetween, SecondsSinceLast());
  m_inStage = true;
  m_last = std::chrono::steady_clock::now();
  if (++counts == stopAt) throw Stop();
}

void CountTimes::ErrorMessage(const char* message, bool fatal) {
  std::printf("%s: %s\n", fatal ? "error" : "warning", message);
  failed = failed || fatal;
}

double CountTimes::SecondsSinceLast() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_last).count();
}
