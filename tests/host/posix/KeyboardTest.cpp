#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "host/qzhost/Keyboard.h"

namespace {

// Runs `body` in a process of its own whose standard input is a fresh terminal; its exit status.
// The body gets the terminal's other end, where keys are pressed.
int OnATerminal(int (*body)(int keys)) {
  const int keys = posix_openpt(O_RDWR | O_NOCTTY);
  if (keys < 0 || grantpt(keys) != 0 || unlockpt(keys) != 0) return -1;
  const std::string name = ptsname(keys);
  const pid_t child = fork();
  if (child == 0) {
    setsid();
    const int terminal = open(name.c_str(), O_RDWR);
    ioctl(terminal, TIOCSCTTY, 0);
    dup2(terminal, STDIN_FILENO);
    _exit(body(keys));
  }
  int status = 0;
  waitpid(child, &status, 0);
  close(keys);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void Press(int keys, const char* text, size_t count) {
  if (write(keys, text, count) < 0) _exit(99);
  // Waits until the keys have arrived at the other end.
  for (int waiting = 0; waiting == 0;) ioctl(STDIN_FILENO, FIONREAD, &waiting);
}

bool EchoIsOn() {
  termios mode;
  tcgetattr(STDIN_FILENO, &mode);
  return (mode.c_lflag & (ICANON | ECHO)) == (ICANON | ECHO);
}

TEST(Keyboard, EscapeAsksToStop) {
  EXPECT_EQ(OnATerminal([](int keys) {
              host::Keyboard keyboard;
              if (keyboard.StopRequested()) return 1;
              Press(keys, "x\x1b", 2);
              return keyboard.StopRequested() && keyboard.StopRequested() ? 0 : 2;
            }),
            0);
}

TEST(Keyboard, ArrowKeysDoNotAskToStop) {
  EXPECT_EQ(OnATerminal([](int keys) {
              host::Keyboard keyboard;
              Press(keys, "\x1b[A", 3);
              return keyboard.StopRequested() ? 1 : 0;
            }),
            0);
}

TEST(Keyboard, TerminalIsRawOnlyWhileTheObjectLives) {
  EXPECT_EQ(OnATerminal([](int) {
              if (!EchoIsOn()) return 1;
              {
                const host::Keyboard keyboard;
                if (EchoIsOn()) return 2;
              }
              return EchoIsOn() ? 0 : 3;
            }),
            0);
}

TEST(Keyboard, InterruptAsksToStopAndTheOldHandlerComesBack) {
  EXPECT_EQ(OnATerminal([](int) {
              signal(SIGINT, SIG_IGN);
              {
                host::Keyboard keyboard;
                raise(SIGINT);
                if (!keyboard.StopRequested()) return 1;
              }
              return signal(SIGINT, SIG_DFL) == SIG_IGN ? 0 : 2;
            }),
            0);
}

// The mode is looked at by the process that watches: the one that held it is dead.
int ModeAfterDeathBy(int number) {
  const int keys = posix_openpt(O_RDWR | O_NOCTTY);
  if (keys < 0 || grantpt(keys) != 0 || unlockpt(keys) != 0) return -1;
  const std::string name = ptsname(keys);
  const int terminal = open(name.c_str(), O_RDWR | O_NOCTTY);
  const pid_t child = fork();
  if (child == 0) {
    setsid();
    ioctl(terminal, TIOCSCTTY, 0);
    dup2(terminal, STDIN_FILENO);
    const host::Keyboard keyboard;
    if (EchoIsOn()) _exit(1);
    // Pressed again and again: what comes at once after the first belongs to it.
    for (;;) raise(number);
  }
  int status = 0;
  waitpid(child, &status, 0);
  termios mode;
  tcgetattr(terminal, &mode);
  close(terminal);
  close(keys);
  if (!WIFSIGNALED(status) || WTERMSIG(status) != number) return -2;
  return (mode.c_lflag & (ICANON | ECHO)) == (ICANON | ECHO) ? 1 : 0;
}

TEST(Keyboard, DeadlySignalRestoresTheTerminal) {
  EXPECT_EQ(ModeAfterDeathBy(SIGTERM), 1);
  EXPECT_EQ(ModeAfterDeathBy(SIGHUP), 1);
}

TEST(Keyboard, InterruptThatArrivesTwiceAtOnceAsksToStopOnly) {
  EXPECT_EQ(OnATerminal([](int) {
              host::Keyboard keyboard;
              raise(SIGINT);
              raise(SIGINT);
              return keyboard.StopRequested() ? 0 : 1;
            }),
            0);
}

TEST(Keyboard, SecondInterruptEndsTheProcessAndRestoresTheTerminal) {
  EXPECT_EQ(ModeAfterDeathBy(SIGINT), 1);
}

}  // namespace
