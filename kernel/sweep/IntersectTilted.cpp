// A ray against a swept body in any position. From a point of the ray outside the body, the tangent
// plane at the nearest boundary point cuts off a stretch of the ray that holds nothing of the body;
// the next point is where that plane cuts the ray. On planes that is one step, on curved pieces the
// steps shrink quadratically.
#include <algorithm>
#include <cmath>
#include <limits>

#include "kernel/sweep/SweptTool.h"

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
constexpr int kMostSteps = 200;

Vec3 PointOn(const Vec3& offset, int rayAxis, double place) {
  Vec3 point = offset;
  point[rayAxis] = place;
  return point;
}

}  // namespace

bool SweptTool::IntersectTilted(int rayAxis, const Vec3& offset, RayInterval& interval) const {
  const Vec3 base = PointOn(offset, rayAxis, 0);
  const ProfilePiece& wall = m_tool->Profile().back();
  const double size = Length(base) + Length(m_move) + wall.start.z + wall.start.r;
  const double touch = 8 * kEpsilon * size;
  // The end of the body on the ray, seen from far off. `way`: +1 looks upwards, -1 downwards.
  const auto approach = [&](double way, double& place) {
    const double rise = -way * m_axis[rayAxis];
    const double spread = std::sqrt(std::max(0.0, (1 - rise) * (1 + rise)));
    // How fast the ray leaves the last wall's cone behind; not at all when it rises more steeply.
    const double parting = rise > 0 ? spread * wall.endNormal.r + rise * wall.endNormal.z : 0.5;
    if (parting <= 0) {
      place = -way * kInfinity;
      return true;
    }
    place = -way * (3 * size / parting);
    for (int step = 0; step < kMostSteps; ++step) {
      const NearestBoundary nearest = NearestTo(PointOn(base, rayAxis, place));
      const double approaching = -way * nearest.normal[rayAxis];
      if (approaching <= 0) return nearest.distance <= touch;
      const double before = place;
      place += way * (nearest.distance / approaching);
      if (std::abs(place - before) <= kEpsilon * std::abs(place)) return true;
    }
    return true;
  };
  if (!approach(1, interval.enter) || !approach(-1, interval.leave)) return false;
  if (!(interval.enter < interval.leave)) return false;
  if (!std::isfinite(interval.enter) || !std::isfinite(interval.leave)) return true;
  const double middle = (interval.enter + interval.leave) / 2;
  return NearestTo(PointOn(base, rayAxis, middle)).distance < -touch;
}

}  // namespace kernel
