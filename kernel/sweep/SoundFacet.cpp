#include "kernel/sweep/SoundFacet.h"

#include <algorithm>

namespace kernel {
namespace {

constexpr double kLeastShape = 1e-3;  // height over longest edge

}  // namespace

bool IsSoundFacet(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& before) {
  const Vec3 normal = Cross(b - a, c - a);
  const double longest =
      std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)});
  return Dot(normal, before) > 0 && Length(normal) > kLeastShape * longest;
}

}  // namespace kernel
