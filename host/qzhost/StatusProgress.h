#pragma once

#include <string>

#include "host/qzhost/Keyboard.h"
#include "host/qzhost/ProgressDisplay.h"
#include "platform/HostProgress.h"

namespace host {

/// The progress of one operation that has no HostProgress but writes into the status bar and asks
/// for keys. While the object lives the percentages of the status bar become the progress bar, and
/// Escape or Ctrl-C is what the operation's question for a pressed Escape is answered with. One
/// object at a time; make it before the operation is called.
class StatusProgress {
 public:
  /// `caption` names the operation where the status bar's text has a percentage only.
  StatusProgress(const std::string& caption, bool quiet);
  StatusProgress(const std::string& caption, ProgressLines lines);
  StatusProgress(const StatusProgress&) = delete;
  StatusProgress& operator=(const StatusProgress&) = delete;
  ~StatusProgress();

  /// True when the operation has been told that the user wants to stop.
  bool WasCancelled() const { return m_cancelled; }

  /// The living object; null when there is none.
  static StatusProgress* Current();

  /// A new text of the status bar: "MESSAGE 42.0%", either part of which may be missing.
  void Show(const std::string& text);
  /// The same in two pieces; a percentage outside 1 to 100 counts as missing.
  void Show(const std::string& message, int percentage);
  /// The operation's question whether to stop.
  bool AskedToStop();

 private:
  std::string m_caption;
  Keyboard m_keyboard;
  ProgressLines m_lines;
  bool m_cancelled = false;
};

/// For operations that have a HostProgress: what they say and ask goes to the living
/// StatusProgress.
class StatusHostProgress final : public HostProgress {
 public:
  bool LoadMessage(int number, CString* text) override;
  void ShowProgress(CString* text, int percentage) override;
  bool IsCancelled() override;
};

}  // namespace host
