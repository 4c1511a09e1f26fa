#include "support/RecordingHostProgress.h"

#include "support/TestHost.h"

namespace support {

bool RecordingHostProgress::LoadMessage(int number, CString* text) {
  Note("LoadMessage " + std::to_string(number) + (text->IsEmpty() ? "" : " into a used text"));
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
}

bool RecordingHostProgress::IsCancelled() {
  Note("IsCancelled");
  ++m_questions;
  return m_questions == cancelOnlyAt || (cancelFrom > 0 && m_questions >= cancelFrom);
}

}  // namespace support
