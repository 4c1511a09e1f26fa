#pragma once

namespace host {

/// Listens for the user's stop while an operation runs: Ctrl-C, and Escape when standard input is a
/// terminal. The terminal's mode and the signal handlers are as before when the object is gone; a
/// signal that ends the process restores the mode as well. One object at a time.
class Keyboard {
 public:
  Keyboard();
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;
  ~Keyboard();

  /// True from the moment on that a stop was asked for.
  bool StopRequested();
};

/// True when Escape has been pressed since an operation began; false when none is running.
bool EscapePressed();

}  // namespace host
