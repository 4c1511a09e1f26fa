#pragma once

#include <stdexcept>
#include <string>

namespace formats {

// A line of a program that cannot be run. what() is the reason alone; whoever knows the file and
// the line adds them. The column counts from 1, 0 where the fault has no place within its line.
class GCodeError : public std::runtime_error {
 public:
  GCodeError(const std::string& reason, int column) : std::runtime_error(reason), column_(column) {}

  int Column() const { return column_; }

 private:
  int column_;
};

}  // namespace formats
