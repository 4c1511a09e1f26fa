#include "platform/HostExecutable.h"

#include <string>

#include "host/qzhost/Keyboard.h"
#include "host/qzhost/StatusBar.h"
#include "host/qzhost/StatusProgress.h"

// Escape is the only key an operation asks for, and it means to stop: Ctrl-C is as good.
bool KeyPress(short code) {
  constexpr short kEscape = 27;
  if (code != kEscape) return false;
  host::StatusProgress* const progress = host::StatusProgress::Current();
  return progress == nullptr ? host::EscapePressed() : progress->AskedToStop();
}

void UpdateStatusBarText(const char* text) {
  const std::string shown = text == nullptr ? "" : text;
  host::StatusProgress* const progress = host::StatusProgress::Current();
  if (progress == nullptr) {
    host::ShowStatus(shown);
  } else {
    progress->Show(shown);
  }
}
