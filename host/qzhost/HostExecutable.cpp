#include "platform/HostExecutable.h"

#include <string>

#include "host/qzhost/Keyboard.h"
#include "host/qzhost/StatusBar.h"

bool KeyPress(short code) {
  constexpr short kEscape = 27;
  return code == kEscape && host::EscapePressed();
}

void UpdateStatusBarText(const char* text) { host::ShowStatus(text == nullptr ? "" : text); }
