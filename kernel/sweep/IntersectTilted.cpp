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
  const double size = Length(base) + Length(move_) + tool_->ProfileTop() +
                      std::min(tool_->WidestRadius(), tool_->Profile().back().start.r);
  const double touch = 8 * kEpsilon * size;
  // The far end of the ray is inside the body when it rises as steeply as the last wall, and
  // outside otherwise. `way`: +1 looks for the first point of the body upwards, -1 downwards.
  const auto approach = [&](double way, double& place) {
    const ProfilePoint& wall = tool_->Profile().back().endNormal;
    const double rise = -way * axis_[rayAxis];
    const double spread = std::sqrt(std::max(0.0, (1 - rise) * (1 + rise)));
    if (spread * wall.r + rise * wall.z <= 0 && rise > 0) {
      place = -way * kInfinity;
      return true;
    }
    place = -way * size;
    NearestBoundary nearest = NearestTo(PointOn(base, rayAxis, place));
    for (int step = 0; nearest.distance <= 0 && step < 60; ++step) {
      place *= 2;
      nearest = NearestTo(PointOn(base, rayAxis, place));
    }
    for (int step = 0; step < kMostSteps; ++step) {
      const double approaching = -way * nearest.normal[rayAxis];
      if (nearest.distance <= 0) return true;
      if (approaching <= 0) return nearest.distance <= touch;
      const double before = place;
      place += way * (nearest.distance / approaching);
      if (std::abs(place - before) <= kEpsilon * std::abs(place)) return true;
      if (std::abs(place) > 1e6 * size) return false;
      nearest = NearestTo(PointOn(base, rayAxis, place));
    }
    return nearest.distance <= touch;
  };
  if (!approach(1, interval.enter) || !approach(-1, interval.leave)) return false;
  if (!(interval.enter < interval.leave)) return false;
  const bool bounded = std::isfinite(interval.enter) && std::isfinite(interval.leave);
  if (!bounded) return true;
  const double middle = (interval.enter + interval.leave) / 2;
  return NearestTo(PointOn(base, rayAxis, middle)).distance < -touch;
}

}  // namespace kernel
