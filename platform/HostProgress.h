#pragma once

#include "MfcApi.h"

/// The host's progress-and-cancel object. The add-in stores the pointer for the length of one
/// operation, calls these three and never owns it. (The real host's class has other operations
/// between and around them; its own header takes this one's place there.)
struct HostProgress {
  /// Puts the host's own wording for `number` into `text`; false without one.
  virtual bool LoadMessage(int number, CString* text) = 0;
  /// Shows the text with a percentage; values outside 1 to 100 carry no percentage.
  virtual void ShowProgress(CString* text, int percentage) = 0;
  /// Whether the user wants the operation to stop.
  virtual bool IsCancelled() = 0;
};
