#include "kernel/compare/TriangleProbe.h"

#include <algorithm>
#include <cstddef>

#include "kernel/compare/SideOfPlane.h"

namespace kernel {
namespace {

bool LieBeyond(const Vec3& normal, const Vec3& from, const Corners& points, double limit) {
  const double a = Dot(normal, points[0] - from);
  const double b = Dot(normal, points[1] - from);
  const double c = Dot(normal, points[2] - from);
  return std::min({a, b, c}) > limit || std::max({a, b, c}) < -limit;
}

// The squared distance of the segments p + s d, q + t e. Nearly parallel ones may be said to be
// further apart than they are: then an end of one is as near.
double SquaredDistance(const Vec3& p, const Vec3& d, const Vec3& q, const Vec3& e) {
  const Vec3 between = p - q;
  const double dd = LengthSquared(d);
  const double ee = LengthSquared(e);
  const double db = Dot(d, between);
  const double eb = Dot(e, between);
  const double de = Dot(d, e);
  const double denominator = dd * ee - de * de;
  double s = denominator > 0 ? std::clamp((de * eb - db * ee) / denominator, 0.0, 1.0) : 0;
  double t = ee > 0 ? (de * s + eb) / ee : 0;
  if (t < 0 || t > 1) {
    t = std::clamp(t, 0.0, 1.0);
    s = dd > 0 ? std::clamp((de * t - db) / dd, 0.0, 1.0) : 0;
  }
  return LengthSquared(between + d * s - e * t);
}

bool EdgePasses(const Vec3& from, const Vec3& to, const Corners& triangle) {
  if (SideOfPlane(triangle, from) * SideOfPlane(triangle, to) >= 0) return false;
  const int first = SideOfPlane({from, to, triangle[0]}, triangle[1]);
  return first != 0 && SideOfPlane({from, to, triangle[1]}, triangle[2]) == first &&
         SideOfPlane({from, to, triangle[2]}, triangle[0]) == first;
}

// Contact of sides and corners is left out: their distance is 0 and is found as such.
bool PassThroughEachOther(const Corners& a, const Corners& b) {
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t next = (i + 1) % 3;
    if (EdgePasses(a[i], a[next], b) || EdgePasses(b[i], b[next], a)) return true;
  }
  return false;
}

}  // namespace

TriangleProbe::TriangleProbe(const Corners& corners)
    : m_corners(corners),
      m_frame(corners),
      m_normal(Normalised(Cross(corners[1] - corners[0], corners[2] - corners[0]))) {}

bool TriangleProbe::IsWithin(double limit, const Corners& other,
                             const TriangleFrame& otherFrame) const {
  const double slack = limit * (1 + 1e-9);
  if (LieBeyond(m_normal, m_corners[0], other, slack)) return false;
  const Vec3 otherNormal = Normalised(Cross(other[1] - other[0], other[2] - other[0]));
  if (LieBeyond(otherNormal, other[0], m_corners, slack)) return false;
  const double square = limit * limit;
  for (std::size_t i = 0; i < 3; ++i) {
    if (otherFrame.SquaredDistance(m_corners[i]) <= square) return true;
    if (m_frame.SquaredDistance(other[i]) <= square) return true;
  }
  for (std::size_t i = 0; i < 3; ++i) {
    const Vec3 along = m_corners[(i + 1) % 3] - m_corners[i];
    for (std::size_t j = 0; j < 3; ++j) {
      const Vec3 otherAlong = other[(j + 1) % 3] - other[j];
      if (SquaredDistance(m_corners[i], along, other[j], otherAlong) <= square) return true;
    }
  }
  return PassThroughEachOther(m_corners, other);
}

}  // namespace kernel
