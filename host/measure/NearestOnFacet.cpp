#include "host/measure/NearestOnFacet.h"

#include <algorithm>

namespace host {

namespace {

Point NearestOnSegment(const Point& a, const Point& b, const Point& p) {
  const Point ab = b - a;
  const double square = Dot(ab, ab);
  if (!(square > 0)) return a;
  return a + std::clamp(Dot(p - a, ab) / square, 0.0, 1.0) * ab;
}

double SquaredLength(const Point& v) { return Dot(v, v); }

Point NearestOnRim(const Triangle& t, const Point& p) {
  Point nearest = t[0];
  double least = SquaredLength(p - t[0]);
  for (std::size_t i = 0; i < 3; ++i) {
    const Point candidate = NearestOnSegment(t[i], t[(i + 1) % 3], p);
    const double square = SquaredLength(p - candidate);
    if (square >= least) continue;
    least = square;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace

Point NearestOnFacet(const Triangle& triangle, const Point& p) {
  const Point normal = DoubleAreaNormal(triangle);
  const double square = Dot(normal, normal);
  if (!(square > 0)) return NearestOnRim(triangle, p);
  // On which side of each edge, within the triangle's plane.
  for (std::size_t i = 0; i < 3; ++i) {
    const Point& from = triangle[i];
    const Point& to = triangle[(i + 1) % 3];
    if (Dot(Cross(normal, to - from), p - from) < 0) return NearestOnRim(triangle, p);
  }
  return p - (Dot(normal, p - triangle[0]) / square) * normal;
}

}  // namespace host
