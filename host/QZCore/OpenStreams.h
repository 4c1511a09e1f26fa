#pragma once

#include <string>
#include <vector>

#include "platform/SystemTypes.h"

/// The streams that the tracked functions have opened, so that one left open can be named.
class OpenStreams {
 public:
  void Add(FILE* stream, const char* sourceUnit, int line, const std::string& path,
           const char* mode);

  /// False, and remembered as a stray close, when the stream is not open.
  bool Remove(FILE* stream, const char* sourceUnit, int line);

  /// Forgets the streams on the file and returns them.
  std::vector<FILE*> RemoveAllOn(const std::string& path);

  int Count() const { return static_cast<int>(m_entries.size()); }
  std::string Report() const;

 private:
  struct Entry {
    FILE* stream;
    std::string path;
    std::string opened;
  };

  std::vector<Entry> m_entries;
  std::vector<std::string> m_strayCloses;
};
