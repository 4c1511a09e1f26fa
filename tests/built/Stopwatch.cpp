#include "built/Stopwatch.h"

#include <algorithm>

#include "built/ProcessFigures.h"

Stopwatch::Stopwatch()
    : m_start(std::chrono::steady_clock::now()), m_processor(ProcessorSeconds()) {}

Stopwatch::Seconds Stopwatch::Elapsed() const {
  return std::min(Seconds(std::chrono::steady_clock::now() - m_start),
                  Seconds(ProcessorSeconds()) - m_processor);
}
