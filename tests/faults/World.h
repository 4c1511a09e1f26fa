#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace faults {

/// All that the host can find after a call.
struct World {
  enum class Thrown { kNothing, kForeign, kNoMemory };

  int flag = 0;
  Thrown thrown = Thrown::kNothing;
  std::map<std::string, std::string> files;  // whole, by their names as events spell them
  std::vector<std::string> streams;          // left open: "UNIT PATH", sorted
  std::size_t blocks = 0;                    // of memory that was not given back
  bool isAtHome = true;                      // the current directory is the one before the call
  std::array<double, 6> box{};               // lower and upper corner
  int kernels = 0;                           // objects that were not destroyed
};

/// What tells `actual` from what it must be, a line each; empty when nothing does.
std::string Differences(const World& expected, const World& actual);

}  // namespace faults
