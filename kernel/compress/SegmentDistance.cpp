#include "kernel/compress/SegmentDistance.h"

#include <algorithm>

namespace kernel {
namespace {

double Share(double part, double whole) {
  return whole > 0 ? std::clamp(part / whole, 0.0, 1.0) : 0;
}

}  // namespace

double SegmentDistanceSquared(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d) {
  const Vec3 ab = b - a;
  const Vec3 cd = d - c;
  const Vec3 ca = a - c;
  const double abab = LengthSquared(ab);
  const double cdcd = LengthSquared(cd);
  const double abcd = Dot(ab, cd);
  // On the first segment next to the second one's line, then there and back once for the ends.
  double s = Share(abcd * Dot(cd, ca) - Dot(ab, ca) * cdcd, abab * cdcd - abcd * abcd);
  const double t = Share(abcd * s + Dot(cd, ca), cdcd);
  s = Share(abcd * t - Dot(ab, ca), abab);
  return LengthSquared(ca + ab * s - cd * t);
}

}  // namespace kernel
