#pragma once

#include <cstdint>
#include <vector>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

/// How often a closed mesh winds around points, for many points: facets are counted along a ray in
/// one fixed direction that no ordinary mesh has an edge in; which of them a ray may meet is looked
/// up in a grid across that direction. Not exact: a ray through an edge may count wrong, which for
/// points that have nothing to do with the direction does not happen. Keeps a copy of what it
/// needs.
class RayWinding {
 public:
  explicit RayWinding(const formats::Mesh& solid);

  int Of(const Point& point) const;

 private:
  struct Shadow {
    Point a, b, c;  // across the ray in 0 and 1, along it in 2
  };

  std::size_t CellOf(double place, std::size_t axis) const;

  Point m_low{}, m_high{};
  std::size_t m_side = 1;  // cells of the grid each way
  std::vector<Shadow> m_shadows;
  std::vector<std::vector<std::uint32_t>> m_cells;
};

}  // namespace support
