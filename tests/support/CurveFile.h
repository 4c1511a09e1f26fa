#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// Points and segments as a kernel sends them; point numbers one-based.
struct Outline {
  std::vector<std::array<double, 3>> points;
  std::vector<std::pair<std::int32_t, std::int32_t>> segments;
};

/// A square in the plane z = 0 with a corner at the origin, its segments in order.
Outline Square(double side);

/// A binary curves file as it stands on the disk; `mode` 1 is the tree variant.
struct CurveFile {
  int mode = 0;
  std::vector<std::array<double, 3>> points;
  std::int32_t segmentCount = 0;  // of all segments received
  std::vector<std::vector<std::pair<std::int32_t, std::int32_t>>> curves;
};

std::string CurveFileBytes(const CurveFile& file);

/// The text at its beginning, all that an unclosed channel leaves.
std::string CurveFileHeader(int mode);

}  // namespace support
