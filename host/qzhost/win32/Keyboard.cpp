#include "host/qzhost/Keyboard.h"

#include <atomic>
#include <conio.h>
#include <io.h>

#include "SystemApi.h"

namespace host {

namespace {

std::atomic<bool> g_interrupted = false;
bool g_listening = false;
bool g_escape = false;

BOOL WINAPI OnConsoleEvent(DWORD event) {
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
  // The second time the user does not want to wait for the add-in's next question.
  return g_interrupted.exchange(true) ? FALSE : TRUE;
}

}  // namespace

Keyboard::Keyboard() {
  g_interrupted = false;
  g_escape = false;
  DWORD mode = 0;
  // A pipe or the null device has no keys; asking them for some would wait.
  g_listening = GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != FALSE;
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

Keyboard::~Keyboard() {
  g_listening = false;
  SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
}

bool Keyboard::StopRequested() { return g_interrupted || EscapePressed(); }

bool EscapePressed() {
  constexpr int kEscape = 27;
  while (g_listening && _kbhit()) {
    if (_getch() == kEscape) g_escape = true;
  }
  return g_escape;
}

}  // namespace host
