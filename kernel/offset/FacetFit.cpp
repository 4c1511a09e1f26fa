#include "kernel/offset/FacetFit.h"

#include <algorithm>
#include <cmath>

#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

// Where a facet is nearly upright over the surface, what the field tells is not raised further.
constexpr double kLeastFacing = 0.1;
// A place that is off by the tolerance counts as much as one that faces aside by 60 degrees; being
// off by more than many tolerances makes no difference.
constexpr double kOffWeight = 0.5;
constexpr double kMostOff = 30;
// Of the square of its longest side: so that a sliver is worth being changed, too.
constexpr double kSliver = 0.02;

}  // namespace

FacetFit FitOf(const LocalOffset& solid, const Corners& facet, const OffsetLimits& limits) {
  const auto& [a, b, c] = facet;
  const Vec3 across = Cross(b - a, c - a);
  FacetFit fit;
  fit.isSound = IsSoundFacet(a, b, c, across);
  const Vec3 normal = Normalised(across);
  const Vec3 centre = (a + b + c) / 3;
  double offSquares = 0, asides = 0, least = 1;
  const auto lookAt = [&](const Vec3& point, bool isInner) {
    const OffSurface off = solid.HowFarOff(point);
    const double distance = std::abs(off.distance);
    const double share = std::min(distance / limits.tolerance, kMostOff);
    offSquares += share * share;
    const double facing = Dot(normal, solid.From(off.maker, point).plane.normal);
    const double raised = distance / std::max(facing, kLeastFacing);
    if (raised > fit.off) {
      fit.off = raised;
      fit.farthest = point;
    }
    // On an edge along a crease either side's normal may be found.
    if (!isInner) return;
    asides += 1 - facing;
    least = std::min(least, facing);
  };
  lookAt(centre, true);
  for (const Vec3& corner : facet) lookAt((corner + centre) / 2, true);
  lookAt((a + b) / 2, false);
  lookAt((b + c) / 2, false);
  lookAt((c + a) / 2, false);
  const double area = Length(across) / 2;
  const double longest =
      std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)});
  fit.cost = (area + kSliver * longest) * (asides / 4 + kOffWeight * offSquares / 7);
  if (least < 0 && longest > 0) fit.fold = 2 * area / std::sqrt(longest);
  return fit;
}

}  // namespace kernel
