#pragma once

#include <cstdio>
#include <cstring>
#include <string>

#include "addin/status_messages.h"

namespace support {

/// Puts "<1>" to "<count>" into the library's table of status messages, which is empty otherwise,
/// and empties it again at the end.
class FilledStatusMessages {
 public:
  explicit FilledStatusMessages(short count = StatusMessageTable::kCapacity) {
    for (int number = 1; number <= count; ++number) {
      Set(number, "<" + std::to_string(number) + ">");
    }
    StatusMessages().count = count;
  }
  FilledStatusMessages(const FilledStatusMessages&) = delete;
  FilledStatusMessages& operator=(const FilledStatusMessages&) = delete;
  ~FilledStatusMessages() { std::memset(&StatusMessages(), 0, sizeof(StatusMessageTable)); }

  /// `text` of at most 199 characters.
  void Set(int number, const std::string& text) {
    auto& entry = StatusMessages().texts[number - 1];
    std::snprintf(entry, sizeof entry, "%s", text.c_str());
  }
};

}  // namespace support
