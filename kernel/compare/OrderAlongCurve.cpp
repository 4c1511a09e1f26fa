#include "kernel/compare/OrderAlongCurve.h"

#include <algorithm>

#include "kernel/common/Box3.h"

namespace kernel {
namespace {

// Spreads the lower 10 bits of x to every third bit.
std::uint64_t Spread(std::uint64_t x) {
  x = (x | x << 16) & 0x30000ff;
  x = (x | x << 8) & 0x300f00f;
  x = (x | x << 4) & 0x30c30c3;
  x = (x | x << 2) & 0x9249249;
  return x;
}

}  // namespace

std::vector<std::uint32_t> OrderAlongCurve(std::span<const Vec3> points) {
  Box3 box;
  for (const Vec3& point : points) box.Include(point);
  const Vec3 size = box.high - box.low;
  const double longest = std::max({size.x, size.y, size.z});
  const double scale = longest > 0 ? 1023 / longest : 0;
  // The place along the curve over the point's number.
  std::vector<std::uint64_t> keys(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 at = (points[i] - box.low) * scale;
    const auto part = [&](int axis) { return Spread(static_cast<std::uint64_t>(at[axis])); };
    keys[i] = (part(0) | part(1) << 1 | part(2) << 2) << 32 | i;
  }
  std::sort(keys.begin(), keys.end());
  std::vector<std::uint32_t> order(points.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<std::uint32_t>(keys[i]);
  return order;
}

}  // namespace kernel
