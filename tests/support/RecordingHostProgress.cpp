#include "support/RecordingHostProgress.h"

#include "support/TestHost.h"

namespace support {
namespace {

// Counts the call and says whether it is planned to fail.
bool Enter(const char* function) {
  TestHost* host = CurrentTestHost();
  return host != nullptr && host->faults.Enter(function);
}

}  // namespace

bool RecordingHostProgress::LoadMessage(int number, CString* text) {
  Note("LoadMessage " + std::to_string(number) + (text->IsEmpty() ? "" : " into a used text"));
  if (Enter("LoadMessage")) return false;
  const auto found = messages.find(number);
  if (found != messages.end()) {
    *text = found->second.c_str();
    return true;
  }
  if (hasEveryMessage) *text = ("message " + std::to_string(number)).c_str();
  return hasEveryMessage;
}

void RecordingHostProgress::ShowProgress(CString* text, int percentage) {
  Note("ShowProgress \"" + std::string(text->GetString()) + "\" " + std::to_string(percentage));
  Enter("ShowProgress");
}

bool RecordingHostProgress::IsCancelled() {
  Note("IsCancelled");
  ++m_questions;
  if (Enter("IsCancelled")) return true;
  return m_questions == cancelOnlyAt || (cancelFrom > 0 && m_questions >= cancelFrom);
}

}  // namespace support
