#include "kernel/sweep/SweptTool.h"

#include <algorithm>
#include <cmath>

#include "kernel/common/FindRoot.h"
#include "kernel/sweep/UprightRays.h"

namespace kernel {
namespace {

constexpr double kStraight = 1e-13;

}  // namespace

SweptTool::SweptTool(const ConvexTool& tool, const Vec3& axis, const Vec3& from, const Vec3& to)
    : tool_(&tool), axis_(axis), from_(from), move_(to - from) {
  for (int k = 0; k < 3; ++k) {
    if (std::abs(axis[(k + 1) % 3]) > kStraight || std::abs(axis[(k + 2) % 3]) > kStraight)
      continue;
    uprightAxis_ = k;
    axis_ = {};
    axis_[k] = axis[k] > 0 ? 1 : -1;
  }
}

Box3 SweptTool::BoundsWithin(const Box3& clip) const {
  if (clip.IsEmpty()) return {};
  // Nothing of the tool that stands higher above the lower tip than this is inside the clip.
  double top = -Box3::kInfinity;
  for (int corner = 0; corner < 8; ++corner) {
    top = std::max(top, Dot(clip.Corner(corner) - from_, axis_));
  }
  top = std::max(top, top - Dot(move_, axis_));
  if (top < 0) return {};
  Box3 bounds;
  for (int k = 0; k < 3; ++k) {
    const double z = axis_[k];
    const double r = std::sqrt(std::max(0.0, (1 - z) * (1 + z)));
    bounds.high[k] = from_[k] + std::max(0.0, move_[k]) + tool_->Support({r, z}, top);
    bounds.low[k] = from_[k] + std::min(0.0, move_[k]) - tool_->Support({r, -z}, top);
  }
  const Box3 inside = Intersection(bounds, clip);
  return inside.IsEmpty() ? Box3{} : inside;
}

bool SweptTool::Intersect(int rayAxis, const Vec3& origin, RayInterval& interval) const {
  const Vec3 offset = origin - from_;
  const bool hit = uprightAxis_ >= 0 ? IntersectUpright(rayAxis, offset, interval)
                                     : IntersectTilted(rayAxis, offset, interval);
  if (!hit) return false;
  interval.enter += from_[rayAxis];
  interval.leave += from_[rayAxis];
  return interval.enter < interval.leave;
}

bool SweptTool::IntersectUpright(int rayAxis, const Vec3& offset, RayInterval& interval) const {
  const double up = axis_[uprightAxis_];
  const int next = (uprightAxis_ + 1) % 3;
  const int last = (uprightAxis_ + 2) % 3;
  if (rayAxis == uprightAxis_) {
    const Vec3 move{move_[next], move_[last], up * move_[uprightAxis_]};
    double height = 0;
    if (!EnterFromBelow(*tool_, move, offset[next], offset[last], height)) return false;
    interval =
        up > 0 ? RayInterval{height, Box3::kInfinity} : RayInterval{-Box3::kInfinity, -height};
    return true;
  }
  const int across = rayAxis == next ? last : next;
  const Vec3 move{move_[rayAxis], move_[across], up * move_[uprightAxis_]};
  return SpanAtHeight(*tool_, move, offset[across], up * offset[uprightAxis_], interval.enter,
                      interval.leave);
}

NearestBoundary SweptTool::NearestAt(const Vec3& offset, double share) const {
  const Vec3 seen = offset - share * move_;
  const double z = Dot(seen, axis_);
  const Vec3 radial = seen - z * axis_;
  const double r = Length(radial);
  const ProfileNearest nearest = tool_->Nearest({r, z});
  Vec3 outwards{};
  if (r > 0) {
    outwards = radial / r;
  } else if (nearest.normal.r != 0) {
    // On the axis every way out is as good; any one at right angles to it will do.
    const Vec3 other = std::abs(axis_.x) < 0.5 ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    outwards = Normalised(Cross(axis_, other));
  }
  return {nearest.distance, nearest.normal.r * outwards + nearest.normal.z * axis_};
}

// The distance to the tool at share s is convex in s; its slope there is -normal * move. On a move
// square to the axis the nearest tool is the one whose axis passes nearest.
NearestBoundary SweptTool::NearestTo(const Vec3& offset) const {
  const double square = LengthSquared(move_);
  if (square == 0) return NearestAt(offset, 0);
  if (Dot(move_, axis_) == 0) {
    return NearestAt(offset, std::clamp(Dot(offset, move_) / square, 0.0, 1.0));
  }
  const auto slopeAt = [&](double share) { return -Dot(NearestAt(offset, share).normal, move_); };
  const double atStart = slopeAt(0);
  if (atStart >= 0) return NearestAt(offset, 0);
  const double atEnd = slopeAt(1);
  if (atEnd <= 0) return NearestAt(offset, 1);
  return NearestAt(offset, FindRoot(slopeAt, 0, atStart, 1, atEnd));
}

NearestBoundary SweptTool::Nearest(const Vec3& point) const { return NearestTo(point - from_); }

Vec3 SweptTool::Project(const Vec3& point) const {
  const NearestBoundary nearest = Nearest(point);
  return point - nearest.distance * nearest.normal;
}

}  // namespace kernel
