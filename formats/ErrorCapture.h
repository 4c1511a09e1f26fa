#pragma once

#include <string>
#include <vector>

namespace formats {

// One entry of the error capture file ("ErrorCapture.txt").
struct CapturedMessage {
  bool fatal = false;
  std::string text;  // without its last line end; may hold several lines
};

// The entries in file order: the file only ever grows, so the most recent one is the last. Either
// system's line ends are understood; text ahead of the first entry is not looked at. Throws
// FileError when the file cannot be read.
std::vector<CapturedMessage> ReadErrorCapture(const std::string& path);

}  // namespace formats
