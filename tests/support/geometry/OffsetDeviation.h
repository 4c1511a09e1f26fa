#pragma once

#include <cstddef>
#include <vector>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

struct OffsetLooks {
  std::size_t step = 1;  // of facets every so many-th one is looked at
  double limit = 1e300;  // places that are further off are noted
};

/// How far an offset and the exact one are apart.
struct OffsetDeviation {
  double ofResult = 0;  // the farthest that a point of the result lies from the exact surface
  double ofExact = 0;   // the farthest that a point of the exact surface lies from the result
  std::size_t resultPoints = 0, exactPoints = 0;  // that were looked at

  struct Place {
    Point at;
    double off;
  };
  std::vector<Place> resultBeyond, exactBeyond;  // the limit
};

/// Looks at vertices, middles of edges and more of the result's facets, and at points of the exact
/// surface above every facet, edge and vertex of `surface`, up to the creases between them. The
/// exact surface bounds all points within |`distance`| of `surface`; below 0, it is the part of
/// that boundary in the solid. A point of the result may be nearer to the exact surface than told,
/// never further away.
OffsetDeviation DeviationOfOffset(const formats::Mesh& surface, double distance,
                                  const formats::Mesh& result, const OffsetLooks& looks = {});

}  // namespace support
