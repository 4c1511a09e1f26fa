#include "host/qzhost/StatusProgress.h"

#include <charconv>
#include <utility>

namespace host {

namespace {

constexpr int kNoPercentage = -1;

StatusProgress* g_current = nullptr;

struct Status {
  std::string message;
  int percentage = kNoPercentage;
};

std::string WithoutBlanksBehind(const std::string& text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// A percentage takes the last six characters, blanks in front of it included; what stands before
// them is the message, which may itself end in a digit.
Status Parse(const std::string& text) {
  constexpr std::size_t kPercentageSize = 6;
  Status messageOnly{WithoutBlanksBehind(text), kNoPercentage};
  if (text.size() < kPercentageSize || text.back() != '%') return messageOnly;
  const std::size_t place = text.size() - kPercentageSize;
  const std::size_t number = text.find_first_not_of(' ', place);
  double percentage = 0.0;
  const auto read = std::from_chars(text.data() + number, text.data() + text.size(), percentage);
  const bool readable = read.ec == std::errc() && percentage >= 0.0 && percentage <= 100.0;
  if (!readable) return messageOnly;
  return {WithoutBlanksBehind(text.substr(0, place)), static_cast<int>(percentage)};
}

}  // namespace

StatusProgress::StatusProgress(const std::string& caption, bool quiet)
    : StatusProgress(caption, LinesOnStandardError(quiet)) {}

StatusProgress::StatusProgress(const std::string& caption, ProgressLines lines)
    : m_caption(caption), m_lines(std::move(lines)) {
  g_current = this;
}

StatusProgress::~StatusProgress() {
  g_current = nullptr;
  m_lines.Finish();
}

StatusProgress* StatusProgress::Current() { return g_current; }

void StatusProgress::Show(const std::string& text) {
  const Status status = Parse(text);
  Show(status.message, status.percentage);
}

void StatusProgress::Show(const std::string& message, int percentage) {
  m_lines.Show(message.empty() ? m_caption : message, percentage);
}

bool StatusProgress::AskedToStop() {
  m_cancelled = m_cancelled || m_keyboard.StopRequested();
  return m_cancelled;
}

bool StatusHostProgress::LoadMessage(int number, CString* text) {
  *text = HostMessage(number).c_str();
  return !text->IsEmpty();
}

void StatusHostProgress::ShowProgress(CString* text, int percentage) {
  StatusProgress::Current()->Show(text->GetString(), percentage);
}

bool StatusHostProgress::IsCancelled() { return StatusProgress::Current()->AskedToStop(); }

}  // namespace host
