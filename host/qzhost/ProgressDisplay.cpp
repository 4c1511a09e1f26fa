#include "host/qzhost/ProgressDisplay.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "host/qzhost/HostSystem.h"
#include "host/qzhost/Report.h"

namespace host {

namespace {

constexpr double kSecondsBetweenRedraws = 0.1;
constexpr int kBarWidth = 30;

ProgressLines::Style StyleFor(bool quiet) {
  if (quiet) return ProgressLines::Style::kNone;
  return StandardErrorIsTerminal() ? ProgressLines::Style::kTerminal : ProgressLines::Style::kPlain;
}

void WriteToStandardError(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

std::function<double()> Stopwatch() {
  const auto start = std::chrono::steady_clock::now();
  return [start] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
}

std::string Bar(int percentage) {
  const auto filled = static_cast<std::size_t>(percentage * kBarWidth / 100);
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "]";
}

}  // namespace

std::string HostMessage(int number) {
  switch (number) {
    case 2:
      return "Working";
    case 44:
      return "Sweeping";
    case 45:
      return "Initialising";
    case 46:
      return "Computing";
    case 47:
      return "Preparing";
    case 48:
      return "Writing the result";
    case 49:
      return "Optimising";
    case 50:
      return "Offsetting";
    default:
      return "";
  }
}

ProgressLines::ProgressLines(Style style, std::function<void(const std::string&)> write,
                             std::function<double()> seconds)
    : m_style(style), m_write(std::move(write)), m_seconds(std::move(seconds)) {}

void ProgressLines::Show(const std::string& stage, int percentage) {
  if (m_style == Style::kNone) return;
  const bool newStage = stage != m_stage;
  const int previous = m_percentage;
  m_stage = stage;
  if (percentage >= 1 && percentage <= 100) {
    m_percentage = percentage;
  } else if (newStage) {
    m_percentage = 0;
  }
  if (m_style == Style::kPlain) {
    ShowPlain(newStage, previous);
  } else if (newStage || m_seconds() - m_lastShown >= kSecondsBetweenRedraws) {
    ShowOnTerminal();
  }
}

void ProgressLines::ShowOnTerminal() {
  m_lastShown = m_seconds();
  std::string line = "\r" + m_stage + "  " + Fixed(m_lastShown, 1) + " s";
  if (m_percentage > 0) line += "  " + Bar(m_percentage) + " " + std::to_string(m_percentage) + "%";
  // What a longer line left behind is erased.
  m_write(line + "\x1b[K");
  m_lineOpen = true;
}

void ProgressLines::ShowPlain(bool newStage, int previous) {
  if (!newStage && m_percentage / 10 <= previous / 10) return;
  std::string line = m_stage + "  " + Fixed(m_seconds(), 1) + " s";
  if (m_percentage > 0) line += "  " + std::to_string(m_percentage) + "%";
  m_write(line + "\n");
}

void ProgressLines::Finish() {
  if (m_lineOpen) m_write("\r\x1b[K");
  m_lineOpen = false;
}

ProgressLines LinesOnStandardError(bool quiet) {
  return ProgressLines(StyleFor(quiet), WriteToStandardError, Stopwatch());
}

ProgressDisplay::ProgressDisplay(bool quiet) : m_lines(LinesOnStandardError(quiet)) {}

ProgressDisplay::~ProgressDisplay() { m_lines.Finish(); }

bool ProgressDisplay::LoadMessage(int number, CString* text) {
  *text = HostMessage(number).c_str();
  return !text->IsEmpty();
}

void ProgressDisplay::ShowProgress(CString* text, int percentage) {
  m_lines.Show(text->GetString(), percentage);
}

bool ProgressDisplay::IsCancelled() {
  m_cancelled = m_cancelled || m_keyboard.StopRequested();
  return m_cancelled;
}

}  // namespace host
