#pragma once

#include <cstddef>

#include "formats/Mesh.h"

namespace support {

/// How far an offset and the exact one are apart.
struct OffsetDeviation {
  double ofResult = 0;  // the farthest that a point of the result lies from the exact surface
  double ofExact = 0;   // the farthest that a point of the exact surface lies from the result
  std::size_t exactPoints = 0;
};

/// Looks at vertices, middles of edges and more of the result's facets, and at points of the exact
/// surface above every facet, edge and vertex of `surface`, up to the creases between them; of
/// facets every `step`-th one. The exact surface bounds all points within |`distance`| of
/// `surface`; below 0, it is the part of that boundary in the solid.
OffsetDeviation DeviationOfOffset(const formats::Mesh& surface, double distance,
                                  const formats::Mesh& result, std::size_t step = 1);

}  // namespace support
