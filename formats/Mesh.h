#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace formats {

struct Facet {
  std::array<std::int32_t, 3> vertices;  // zero-based, counter-clockwise seen from outside
  std::uint8_t colour = 0;               // the host's colour number
};

// An indexed triangle mesh; lengths in the host's units.
struct Mesh {
  std::vector<std::array<double, 3>> vertices;
  std::vector<Facet> facets;
};

}  // namespace formats
