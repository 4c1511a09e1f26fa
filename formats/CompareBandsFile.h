#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace formats {

// How a part is coloured by its distance from a stock: colour number i goes up to distance number
// i, `stockColour` belongs to what lies beyond the last. Colours are 0 to 256, distances in length
// units, in any order.
struct CompareBands {
  std::uint32_t stockColour = 0;
  std::vector<std::uint32_t> colours;
  std::vector<double> distances;  // as many
};

// "TmpCompareInfo.tmp". Bytes after the last distance are not looked at. Throws FileError for a
// file that ends early, has no division, or has a colour above 256 or a distance that is not
// finite.
CompareBands ReadCompareBands(const std::string& path);

// Throws FileError.
void WriteCompareBands(const std::string& path, const CompareBands& bands);

}  // namespace formats
