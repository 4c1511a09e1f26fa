#include "kernel/common/Reporter.h"

#include <algorithm>

#include "callbacks/UIDialog.h"
#include "kernel/common/KernelLog.h"

namespace kernel {

void Reporter::BeginStage(const char* text, int fromPercent, int toPercent) {
  m_text = text;
  m_from = fromPercent;
  m_to = toPercent;
  AppendToKernelLog("stage: " + m_text);
  // A percentage of 0 would not be shown; the first one of a run is 1.
  Announce(std::max(1, fromPercent));
}

void Reporter::Advance(double done, double total) {
  const double share = total > 0 ? std::clamp(done / total, 0.0, 1.0) : 1.0;
  const int percent = m_from + static_cast<int>(share * (m_to - m_from));
  if (percent > m_percent) {
    Announce(percent);
  } else if (std::chrono::steady_clock::now() - m_last >= std::chrono::milliseconds(100)) {
    m_last = std::chrono::steady_clock::now();
    if (m_callbacks != nullptr) m_callbacks->UpdateProgress(m_text.c_str());
  }
}

void Reporter::EndStage() {
  if (m_callbacks != nullptr) m_callbacks->EndProgress();
}

void Reporter::Warn(const std::string& message) {
  AppendToKernelLog("warning: " + message);
  if (m_callbacks != nullptr) m_callbacks->ErrorMessage(message.c_str(), false);
}

void Reporter::Fail(const std::string& message) {
  AppendToKernelLog("error: " + message);
  if (m_callbacks != nullptr) m_callbacks->ErrorMessage(message.c_str(), true);
}

void Reporter::Announce(int percent) {
  m_percent = percent;
  m_last = std::chrono::steady_clock::now();
  if (m_callbacks != nullptr) m_callbacks->CreateProgress(m_text.c_str(), percent);
}

}  // namespace kernel
