#include "support/geometry/PlainDeviation.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"

namespace support {

double WindingNumber(const formats::Mesh& solid, const Point& point) {
  double sum = 0;
  for (const formats::Facet& facet : solid.facets) {
    const auto corners = Corners(solid, facet);
    const Point a = Minus(corners[0], point);
    const Point b = Minus(corners[1], point);
    const Point c = Minus(corners[2], point);
    const double la = Length(a), lb = Length(b), lc = Length(c);
    const double below = la * lb * lc + Dot(a, b) * lc + Dot(b, c) * la + Dot(c, a) * lb;
    sum += std::atan2(Dot(a, Cross(b, c)), below);
  }
  return sum / (2 * std::numbers::pi);
}

double PlainDeviation(const formats::Mesh& solid, const Point& point) {
  double distance = std::numeric_limits<double>::infinity();
  for (const formats::Facet& facet : solid.facets) {
    const auto [a, b, c] = Corners(solid, facet);
    distance = std::min(distance, DistanceToTriangle(point, a, b, c));
  }
  return WindingNumber(solid, point) > 0.5 ? distance : -distance;
}

}  // namespace support
