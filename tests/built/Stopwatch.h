#pragma once

#include <chrono>

/// How long something takes on a machine that does nothing else: the time that has passed or, when
/// that is less, the processor time of all threads, since on a busy machine much of the time that
/// passes is that of others.
class Stopwatch {
 public:
  using Seconds = std::chrono::duration<double>;

  Stopwatch();
  Seconds Elapsed() const;

 private:
  std::chrono::steady_clock::time_point m_start;
  Seconds m_processor;
};
