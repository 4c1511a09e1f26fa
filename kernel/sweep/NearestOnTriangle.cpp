#include "kernel/sweep/NearestOnTriangle.h"

namespace kernel {

PointOnTriangle NearestOnTriangle(const std::array<Vec3, 3>& corners, const Vec3& from) {
  using Kind = TrianglePart::Kind;
  const auto& [a, b, c] = corners;
  const Vec3 ab = b - a;
  const Vec3 ac = c - a;
  const double d1 = Dot(ab, from - a);
  const double d2 = Dot(ac, from - a);
  if (d1 <= 0 && d2 <= 0) return {a, {Kind::kCorner, 0}};
  const double d3 = Dot(ab, from - b);
  const double d4 = Dot(ac, from - b);
  if (d3 >= 0 && d4 <= d3) return {b, {Kind::kCorner, 1}};
  const double d5 = Dot(ab, from - c);
  const double d6 = Dot(ac, from - c);
  if (d6 >= 0 && d5 <= d6) return {c, {Kind::kCorner, 2}};
  const double overC = d1 * d4 - d3 * d2;
  if (overC <= 0 && d1 >= 0 && d3 <= 0) return {a + ab * (d1 / (d1 - d3)), {Kind::kEdge, 0}};
  const double overB = d5 * d2 - d1 * d6;
  if (overB <= 0 && d2 >= 0 && d6 <= 0) return {a + ac * (d2 / (d2 - d6)), {Kind::kEdge, 2}};
  const double overA = d3 * d6 - d5 * d4;
  if (overA <= 0 && d4 >= d3 && d5 >= d6) {
    return {b + (c - b) * ((d4 - d3) / ((d4 - d3) + (d5 - d6))), {Kind::kEdge, 1}};
  }
  const double sum = overA + overB + overC;
  return {a + ab * (overB / sum) + ac * (overC / sum), {Kind::kInside, 0}};
}

}  // namespace kernel
