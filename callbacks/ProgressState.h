#pragma once

/// The kernel's progress run as UIDialogQZC knows it. One for the whole library, like the run
/// flags, but not reset with them: what a kernel run leaves here is there when the next one begins.
struct ProgressState {
  /// Replaces `text`, cut to what fits.
  void SetText(const char* message);

  char text[280] = "";
  int total = 0;
  short messageNumber = 1;      // of the status message table; 1 stands for an unknown text
  bool shown = false;           // a percentage of this run was shown and the keyboard asked
  double lastPercentage = 0.0;  // when the keyboard was last asked
};

ProgressState& CurrentProgress();
