#pragma once

#include <functional>
#include <string>

#include "host/qzhost/Keyboard.h"
#include "platform/HostProgress.h"

namespace host {

/// The host's text for a message number of a stock operation; empty when there is none.
std::string HostMessage(int number);

/// What the progress of one operation looks like. On a terminal one line is rewritten; elsewhere a
/// line appears for each new stage and each further tenth.
class ProgressLines {
 public:
  enum class Style { kTerminal, kPlain, kNone };

  /// `write` takes finished text; `seconds` tells the time since the operation began.
  ProgressLines(Style style, std::function<void(const std::string&)> write,
                std::function<double()> seconds);

  /// A percentage outside 1 to 100 is not shown; the stage then keeps the one it had.
  void Show(const std::string& stage, int percentage);
  void Finish();

 private:
  void ShowOnTerminal();
  void ShowPlain(bool newStage, int previous);

  Style m_style;
  std::function<void(const std::string&)> m_write;
  std::function<double()> m_seconds;
  std::string m_stage;
  int m_percentage = 0;
  double m_lastShown = -1.0;
  bool m_lineOpen = false;
};

/// Lines on standard error in the style that suits it; none when `quiet`. Time begins now.
ProgressLines LinesOnStandardError(bool quiet);

/// The host's progress object for one operation: shows its progress on standard error and asks the
/// keyboard whether to stop.
class ProgressDisplay final : public HostProgress {
 public:
  explicit ProgressDisplay(bool quiet);
  ProgressDisplay(const ProgressDisplay&) = delete;
  ProgressDisplay& operator=(const ProgressDisplay&) = delete;
  ~ProgressDisplay();

  bool LoadMessage(int number, CString* text) override;
  void ShowProgress(CString* text, int percentage) override;
  bool IsCancelled() override;

  /// True when the add-in has been told that the user wants to stop.
  bool WasCancelled() const { return m_cancelled; }

 private:
  Keyboard m_keyboard;
  ProgressLines m_lines;
  bool m_cancelled = false;
};

}  // namespace host
