#include "kernel/common/StageProgress.h"

#include <algorithm>

#include "callbacks/UIDialog.h"
#include "kernel/common/KernelLog.h"

namespace kernel {
namespace {

constexpr int kTotal = 1000;
constexpr int kPollCounts = 31;  // a rise of more than 3 points
constexpr std::chrono::milliseconds kPollInterval{300};
constexpr std::chrono::milliseconds kCountInterval{75};

}  // namespace

void StageProgress::Begin(const char* text) {
  m_text = text;
  AppendToKernelLog(std::string("stage: ") + text);
  if (m_callbacks != nullptr) m_callbacks->CreateProgress(text, kTotal);
  m_count = 0;
  m_polledCount = -kPollCounts;
  Count(1);
}

void StageProgress::Advance(double share) {
  // The last count is left to End.
  const int count = std::min(static_cast<int>(std::clamp(share, 0.0, 1.0) * kTotal), kTotal - 1);
  if (count > m_count) {
    Count(count);
  } else if (Clock::now() - m_counted >= kCountInterval) {
    Count(std::min(m_count + 1, kTotal - 1));
  }
}

void StageProgress::End() {
  Count(kTotal);
  if (m_callbacks != nullptr) m_callbacks->EndProgress();
}

void StageProgress::Count(int count) {
  m_count = count;
  m_counted = Clock::now();
  const bool late = m_counted - m_polled >= kPollInterval;
  if (count - m_polledCount >= kPollCounts || late) {
    if (count - m_polledCount < kPollCounts && m_callbacks != nullptr) {
      m_callbacks->ResetWait(m_text, kTotal);
    }
    m_polledCount = count;
    m_polled = m_counted;
  }
  if (m_callbacks != nullptr) m_callbacks->SetProgress(count);
}

}  // namespace kernel
