// Over the point (x, y) the tool at share s of its move has the height s dz + H(r(s)), H the height
// of its outline at distance r from the axis. With L the level length of the move, v the distance
// still to go along it to be level with the point, and u the distance across it, this is
// k (w - v) + H(sqrt(u^2 + v^2)), k = dz / L: convex in v. Its lowest point is where the outline's
// slope against v is k. The slope grows with v, so the piece that holds it is found by looking at
// the slopes at the pieces' ends.
#include <algorithm>
#include <cmath>
#include <limits>

#include "kernel/common/FindRoot.h"
#include "kernel/sweep/UprightRays.h"

namespace kernel {
namespace {

// Slope of the height against v at a point of the outline that has the given normal.
double SlopeAt(const ProfilePoint& normal, double r, double v) {
  if (normal.z == 0) return std::numeric_limits<double>::infinity();
  return normal.r / -normal.z * (r > 0 ? v / r : 0);
}

double DistanceAlong(double r, double u) { return r > u ? std::sqrt((r - u) * (r + u)) : 0; }

double LevelOnCone(const ProfilePiece& piece, double u, double k) {
  const double steepness = piece.startNormal.r / -piece.startNormal.z;
  return u * k / std::sqrt((steepness - k) * (steepness + k));
}

double LevelOnArc(const ProfilePiece& piece, double u, double k) {
  if (piece.centre.r == 0) {
    return k * DistanceAlong(piece.radius, u) / std::sqrt(1 + k * k);
  }
  // On a ring, in the sine t of the angle that the normal makes with the axis.
  const auto radiusAt = [&](double t) { return piece.centre.r + piece.radius * t; };
  const auto excess = [&](double t) {
    const double r = radiusAt(t);
    return t * DistanceAlong(r, u) - k * r * std::sqrt((1 - t) * (1 + t));
  };
  const double lowest =
      std::clamp((u - piece.centre.r) / piece.radius, piece.startNormal.r, piece.endNormal.r);
  const double highest = piece.endNormal.r;
  const double atLowest = excess(lowest);
  const double atHighest = excess(highest);
  if (atLowest >= 0) return DistanceAlong(radiusAt(lowest), u);
  if (atHighest <= 0) return DistanceAlong(radiusAt(highest), u);
  return DistanceAlong(radiusAt(FindRoot(excess, lowest, atLowest, highest, atHighest)), u);
}

// The v >= 0 at which the outline's slope is k >= 0, or the widest there is.
double LevelDistance(const ConvexTool& tool, double u, double k) {
  double v = DistanceAlong(tool.WidestRadius(), u);
  for (const ProfilePiece& piece : tool.Profile()) {
    const bool isUpright = piece.end.r <= piece.start.r;
    if (isUpright) return DistanceAlong(piece.start.r, u);
    if (piece.end.r <= u) continue;
    const bool isUnbounded = std::isinf(piece.end.r);
    const double slopeAtEnd =
        isUnbounded ? SlopeAt(piece.endNormal, 1, 1)
                    : SlopeAt(piece.endNormal, piece.end.r, DistanceAlong(piece.end.r, u));
    const bool isFlat = piece.endNormal.r == 0;
    if (isFlat || slopeAtEnd <= k) continue;
    const double vStart = DistanceAlong(piece.start.r, u);
    if (SlopeAt(piece.startNormal, piece.start.r, vStart) >= k) return vStart;
    return piece.isArc ? LevelOnArc(piece, u, k) : LevelOnCone(piece, u, k);
  }
  return v;
}

}  // namespace

bool EnterFromBelow(const ConvexTool& tool, const Vec3& move, double x, double y, double& height) {
  const double widest = tool.WidestRadius();
  const double level = std::sqrt(move.x * move.x + move.y * move.y);
  if (level == 0) {
    const double r = std::sqrt(x * x + y * y);
    if (r >= widest) return false;
    height = tool.HeightAt(r) + std::min(0.0, move.z);
    return true;
  }
  const double w = (x * move.x + y * move.y) / level;
  const double u = std::abs(x * move.y - y * move.x) / level;
  if (u >= widest) return false;
  // In shares of the move, which keep their meaning when it is all but a plunge or no move at all.
  const double reach = DistanceAlong(widest, u);
  const double first = std::max(0.0, (w - reach) / level);
  const double last = std::min(1.0, (w + reach) / level);
  if (first >= last) return false;
  const double k = move.z / level;
  const double v = k == 0 ? 0 : std::copysign(LevelDistance(tool, u, std::abs(k)), k);
  const double share = std::clamp((w - v) / level, first, last);
  const double along = w - share * level;
  height = share * move.z + tool.HeightAt(std::sqrt(u * u + along * along));
  return true;
}

}  // namespace kernel
