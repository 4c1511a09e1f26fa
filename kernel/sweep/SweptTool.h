#pragma once

#include "kernel/common/Box3.h"
#include "kernel/common/Vec3.h"
#include "kernel/sweep/ConvexTool.h"

namespace kernel {

// Where a ray runs inside a body, as coordinates along the ray's axis; either may be infinite.
struct RayInterval {
  double enter = 0;
  double leave = 0;
};

// A point seen from a body's boundary.
struct NearestBoundary {
  double distance = 0;  // below 0 inside
  Vec3 normal;          // outward unit normal at the boundary point nearest to it
};

// Everything a convex tool passes through on a straight move, its axis keeping its direction: a
// convex body, the tool itself where the move has no length. Cheap to make; keeps a reference to
// the tool, which must outlive it. Const members may be called from any number of threads.
class SweptTool {
 public:
  // `axis`: unit vector from the tip up the shank. `from`, `to`: the tip. An axis within 1e-13 of a
  // coordinate axis counts as that one.
  SweptTool(const ConvexTool& tool, const Vec3& axis, const Vec3& from, const Vec3& to);

  // A box around the part of the body inside `clip` (which must be finite), itself inside `clip`;
  // empty when there is none. Tight for an upright tool whose whole outline lies inside.
  Box3 BoundsWithin(const Box3& clip) const;

  // The ray through `origin` along a coordinate axis (0 to 2). False when it misses the body's
  // inside, also when it only touches. The origin's own coordinate along the ray is of no account.
  bool Intersect(int rayAxis, const Vec3& origin, RayInterval& interval) const;

  // Exact outside the body and near its boundary; deep inside, the distance may be closer to 0 than
  // the true one, never of the wrong sign.
  NearestBoundary Nearest(const Vec3& point) const;

  double SignedDistance(const Vec3& point) const { return Nearest(point).distance; }
  Vec3 Normal(const Vec3& point) const { return Nearest(point).normal; }

  // The boundary point nearest to `point`, which must be near the boundary.
  Vec3 Project(const Vec3& point) const;

 private:
  bool IntersectUpright(int rayAxis, const Vec3& offset, RayInterval& interval) const;
  bool IntersectTilted(int rayAxis, const Vec3& offset, RayInterval& interval) const;
  NearestBoundary NearestAt(const Vec3& offset, double share) const;
  NearestBoundary NearestTo(const Vec3& offset) const;
  bool IsNearestOnBall(const Vec3& offset, NearestBoundary& nearest) const;

  const ConvexTool* m_tool;
  Vec3 m_axis;
  Vec3 m_from;
  Vec3 m_move;
  int m_uprightAxis = -1;  // the coordinate axis that the tool's axis is parallel to, or -1
};

}  // namespace kernel
