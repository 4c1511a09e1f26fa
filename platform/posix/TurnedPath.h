#pragma once

#include <climits>
#include <cstddef>

/// A path with its backslashes turned into slashes. Lives on the stack, so that opening a file
/// costs no allocation here that it would not cost on Windows.
class TurnedPath {
 public:
  /// A null or over-long path becomes one that cannot be opened.
  explicit TurnedPath(const char* path) {
    m_text[0] = '\0';
    if (path == nullptr) return;
    std::size_t length = 0;
    while (path[length] != '\0') {
      if (length + 1 == sizeof m_text) {
        m_text[0] = '\0';
        return;
      }
      m_text[length] = path[length] == '\\' ? '/' : path[length];
      ++length;
    }
    m_text[length] = '\0';
  }

  const char* c_str() const { return m_text; }

 private:
  char m_text[PATH_MAX];
};
