#include "kernel/heal/SurfaceMesh.h"

#include <algorithm>
#include <cmath>

namespace kernel {

double SurfaceMesh::Height(const Facet& facet) const {
  const Vec3 &a = Corner(facet, 0), &b = Corner(facet, 1), &c = Corner(facet, 2);
  const double longest =
      std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)});
  return longest > 0 ? std::sqrt(LengthSquared(Normal(facet)) / longest) : 0;
}

Box3 SurfaceMesh::Bounds() const {
  Box3 box;
  for (const Facet& facet : facets) {
    for (std::size_t i = 0; i < 3; ++i) box.Include(Corner(facet, i));
  }
  return box;
}

}  // namespace kernel
