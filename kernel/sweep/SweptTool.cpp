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
    : m_tool(&tool), m_axis(axis), m_from(from), m_move(to - from) {
  for (int k = 0; k < 3; ++k) {
    if (std::abs(axis[(k + 1) % 3]) > kStraight || std::abs(axis[(k + 2) % 3]) > kStraight)
      continue;
    m_uprightAxis = k;
    m_axis = {};
    m_axis[k] = axis[k] > 0 ? 1 : -1;
  }
}

Box3 SweptTool::BoundsWithin(const Box3& clip) const {
  if (clip.IsEmpty()) return {};
  // Nothing of the tool that stands higher above the lower tip than this is inside the clip.
  double top = -Box3::kInfinity;
  for (int corner = 0; corner < 8; ++corner) {
    top = std::max(top, Dot(clip.Corner(corner) - m_from, m_axis));
  }
  top = std::max(top, top - Dot(m_move, m_axis));
  if (top < 0) return {};
  Box3 bounds;
  for (int k = 0; k < 3; ++k) {
    const double z = m_axis[k];
    const double r = std::sqrt(std::max(0.0, (1 - z) * (1 + z)));
    bounds.high[k] = m_from[k] + std::max(0.0, m_move[k]) + m_tool->Support({r, z}, top);
    bounds.low[k] = m_from[k] + std::min(0.0, m_move[k]) - m_tool->Support({r, -z}, top);
  }
  const Box3 inside = Intersection(bounds, clip);
  return inside.IsEmpty() ? Box3{} : inside;
}

bool SweptTool::Intersect(int rayAxis, const Vec3& origin, RayInterval& interval) const {
  const Vec3 offset = origin - m_from;
  const bool hit = m_uprightAxis >= 0 ? IntersectUpright(rayAxis, offset, interval)
                                      : IntersectTilted(rayAxis, offset, interval);
  if (!hit) return false;
  interval.enter += m_from[rayAxis];
  interval.leave += m_from[rayAxis];
  return interval.enter < interval.leave;
}

bool SweptTool::IntersectUpright(int rayAxis, const Vec3& offset, RayInterval& interval) const {
  const double up = m_axis[m_uprightAxis];
  const int next = (m_uprightAxis + 1) % 3;
  const int last = (m_uprightAxis + 2) % 3;
  if (rayAxis == m_uprightAxis) {
    const Vec3 move{m_move[next], m_move[last], up * m_move[m_uprightAxis]};
    double height = 0;
    if (!EnterFromBelow(*m_tool, move, offset[next], offset[last], height)) return false;
    interval =
        up > 0 ? RayInterval{height, Box3::kInfinity} : RayInterval{-Box3::kInfinity, -height};
    return true;
  }
  const int across = rayAxis == next ? last : next;
  const Vec3 move{m_move[rayAxis], m_move[across], up * m_move[m_uprightAxis]};
  return SpanAtHeight(*m_tool, move, offset[across], up * offset[m_uprightAxis], interval.enter,
                      interval.leave);
}

NearestBoundary SweptTool::NearestAt(const Vec3& offset, double share) const {
  const Vec3 seen = offset - share * m_move;
  const double z = Dot(seen, m_axis);
  const Vec3 radial = seen - z * m_axis;
  const double r = Length(radial);
  const ProfileNearest nearest = m_tool->Nearest({r, z});
  Vec3 outwards{};
  if (r > 0) {
    outwards = radial / r;
  } else if (nearest.normal.r != 0) {
    // On the axis every way out is as good; any one at right angles to it will do.
    const Vec3 other = std::abs(m_axis.x) < 0.5 ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    outwards = Normalised(Cross(m_axis, other));
  }
  return {nearest.distance, nearest.normal.r * outwards + nearest.normal.z * m_axis};
}

// The distance to the tool at share s is convex in s; its slope there is -normal * move. On a move
// square to the axis the nearest tool is the one whose axis passes nearest.
NearestBoundary SweptTool::NearestTo(const Vec3& offset) const {
  const double square = LengthSquared(m_move);
  if (square == 0) return NearestAt(offset, 0);
  if (Dot(m_move, m_axis) == 0) {
    return NearestAt(offset, std::clamp(Dot(offset, m_move) / square, 0.0, 1.0));
  }
  NearestBoundary onBall;
  if (IsNearestOnBall(offset, onBall)) return onBall;
  const auto slopeAt = [&](double share) { return -Dot(NearestAt(offset, share).normal, m_move); };
  const double atStart = slopeAt(0);
  if (atStart >= 0) return NearestAt(offset, 0);
  const double atEnd = slopeAt(1);
  if (atEnd <= 0) return NearestAt(offset, 1);
  return NearestAt(offset, FindRoot(slopeAt, 0, atStart, 1, atEnd));
}

// The ball that comes nearest is known at once; it holds when the tool's whole outline agrees.
bool SweptTool::IsNearestOnBall(const Vec3& offset, NearestBoundary& nearest) const {
  const std::optional<double> centre = m_tool->BallCentre();
  if (!centre) return false;
  const double along = Dot(offset - *centre * m_axis, m_move) / LengthSquared(m_move);
  const double share = std::clamp(along, 0.0, 1.0);
  nearest = NearestAt(offset, share);
  const double slope = -Dot(nearest.normal, m_move);
  const double level = kStraight * Length(m_move);
  return (share == 0 || slope <= level) && (share == 1 || slope >= -level);
}

NearestBoundary SweptTool::Nearest(const Vec3& point) const { return NearestTo(point - m_from); }

Vec3 SweptTool::Project(const Vec3& point) const {
  const NearestBoundary nearest = Nearest(point);
  return point - nearest.distance * nearest.normal;
}

}  // namespace kernel
