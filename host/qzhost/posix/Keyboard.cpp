#include "host/qzhost/Keyboard.h"

#include <cstddef>
#include <signal.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

namespace host {

namespace {

constexpr int kStopSignal = SIGINT;
constexpr int kDeadlySignals[] = {SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGSEGV, SIGBUS, SIGFPE};
constexpr std::size_t kDeadlyCount = sizeof kDeadlySignals / sizeof kDeadlySignals[0];

volatile sig_atomic_t g_interrupted = 0;
timespec g_interruptedAt;
volatile sig_atomic_t g_terminalIsRaw = 0;
bool g_escape = false;
termios g_modeBefore;
struct sigaction g_stopActionBefore;
struct sigaction g_deadlyActionsBefore[kDeadlyCount];

void RestoreTerminal() {
  if (g_terminalIsRaw == 0) return;
  g_terminalIsRaw = 0;
  tcsetattr(STDIN_FILENO, TCSANOW, &g_modeBefore);
}

// One press can arrive as two signals: to the process, and again to its group.
constexpr long kSamePressNanoseconds = 200'000'000;

bool BelongsToTheFirstPress() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  const long seconds = static_cast<long>(now.tv_sec - g_interruptedAt.tv_sec);
  return seconds * 1'000'000'000 + (now.tv_nsec - g_interruptedAt.tv_nsec) < kSamePressNanoseconds;
}

void OnStop(int number) {
  if (g_interrupted != 0) {
    if (BelongsToTheFirstPress()) return;
    // The second time the user does not want to wait for the add-in's next question.
    RestoreTerminal();
    signal(number, SIG_DFL);
    raise(number);
  }
  clock_gettime(CLOCK_MONOTONIC, &g_interruptedAt);
  g_interrupted = 1;
}

void OnDeadlySignal(int number) {
  RestoreTerminal();
  signal(number, SIG_DFL);
  raise(number);
}

void Install(int number, void (*handler)(int), struct sigaction* before) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, before);
}

// A background process must leave the terminal alone: changing its mode would stop the process.
bool OwnsTerminal() { return isatty(STDIN_FILENO) && tcgetpgrp(STDIN_FILENO) == getpgrp(); }

void ReadKeysOneByOne() {
  if (!OwnsTerminal() || tcgetattr(STDIN_FILENO, &g_modeBefore) != 0) return;
  termios mode = g_modeBefore;
  mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  mode.c_cc[VMIN] = 0;
  mode.c_cc[VTIME] = 0;
  g_terminalIsRaw = 1;
  if (tcsetattr(STDIN_FILENO, TCSANOW, &mode) != 0) g_terminalIsRaw = 0;
}

void PollKeys() {
  if (g_terminalIsRaw == 0) return;
  char keys[64];
  const ssize_t count = read(STDIN_FILENO, keys, sizeof keys);
  for (ssize_t index = 0; index < count; ++index) {
    if (keys[index] != 27) continue;
    // Arrow and function keys send Escape too, with more behind it.
    if (index + 1 == count || keys[index + 1] == 27) g_escape = true;
  }
}

}  // namespace

Keyboard::Keyboard() {
  g_interrupted = 0;
  g_escape = false;
  ReadKeysOneByOne();
  Install(kStopSignal, OnStop, &g_stopActionBefore);
  for (std::size_t index = 0; index < kDeadlyCount; ++index) {
    Install(kDeadlySignals[index], OnDeadlySignal, &g_deadlyActionsBefore[index]);
  }
}

Keyboard::~Keyboard() {
  RestoreTerminal();
  sigaction(kStopSignal, &g_stopActionBefore, nullptr);
  for (std::size_t index = 0; index < kDeadlyCount; ++index) {
    sigaction(kDeadlySignals[index], &g_deadlyActionsBefore[index], nullptr);
  }
}

bool Keyboard::StopRequested() { return g_interrupted != 0 || EscapePressed(); }

bool EscapePressed() {
  PollKeys();
  return g_escape;
}

}  // namespace host
