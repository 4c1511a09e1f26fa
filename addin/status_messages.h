#pragma once

/// What the host's status bar says while a kernel runs under UIDialogQZC: a numbered message and,
/// behind it, a percentage or the counter of a phase. Whatever is too long is cut.

/// Messages by number, from 1. Nothing in the add-in fills the table: `count` stays 0, and all that
/// the status bar then shows is the bare percentage. Whoever supplies texts fills them in from the
/// front and sets `count`.
struct StatusMessageTable {
  static constexpr int kCapacity = 25;
  static constexpr int kTextSize = 200;

  char texts[kCapacity][kTextSize];  // each ends in a zero
  short count;                       // at most kCapacity
};

/// The one table of the library.
StatusMessageTable& StatusMessages();

// `number` is 1 or more in all three: only the upper bound is looked at.

/// Clears the host's prompt line and text area and shows the message, when the table has it.
void ShowStatusMessage(short number);

/// Clears prompt line and text area and shows the message followed by the counter that `kernelText`
/// holds: "Offsetting (phase 2)... 17" has 17, and likewise phase 3. A text of phase 2 or 3 that
/// has no counter there shows -2 or -3, any other text -1. Without the message in the table
/// `kernelText` is not looked at.
void ShowPhaseMessage(short number, const char* kernelText);

/// Shows the message, or nothing when the table does not have it, followed by `percent` with one
/// decimal, five characters wide at least, and a percent sign. Nothing is cleared.
void ShowProgressPercent(short number, double percent);
