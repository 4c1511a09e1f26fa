#pragma once

#include <stdexcept>

namespace formats {

// A file that cannot be opened, read, understood or written. what() is one line that can be shown
// as it stands: "FILE: reason", followed by "(byte N)" or "(line N)" where a place is known. Bytes
// count from 0, lines from 1.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace formats
