#include "kernel/sweep/RaySpacing.h"

#include <algorithm>
#include <cmath>

namespace kernel {
namespace {

constexpr double kMemoryLimit = 8.0 * 1024 * 1024 * 1024;
// Bytes for each node (its sign, the cell's mark and rank), each ray (its list and one interval
// with the allocator's share) and each cell of the surface (cell, vertex, facets and their
// merging).
constexpr double kBytesPerNode = 0.32;
constexpr double kBytesPerRay = 80;
constexpr double kBytesPerSurfaceCell = 450;
constexpr double kCurvatureShare = 0.8;
constexpr double kSpacingsOfATip = 4;  // of the tolerance, on a face straight up

double MemoryFor(const Box3& box, double spacing) {
  const Vec3 n = (box.high - box.low) / spacing + Vec3{2, 2, 2};
  const double rays = n.x * n.y + n.y * n.z + n.z * n.x;
  return kBytesPerNode * n.x * n.y * n.z + kBytesPerRay * rays + kBytesPerSurfaceCell * 2 * rays;
}

double SpacingFor(double tolerance, const Curvature& curvature) {
  const double round =
      std::min(kCurvatureShare * std::sqrt(4 * curvature.radius * tolerance), curvature.radius / 3);
  return curvature.tipSlope > 0 ? std::min(round, kSpacingsOfATip * tolerance / curvature.tipSlope)
                                : round;
}

}  // namespace

RaySpacing ChooseRaySpacing(const Box3& box, double tolerance, const Curvature& curvature) {
  const Vec3 extent = box.high - box.low;
  const double thinnest = std::min({extent.x, extent.y, extent.z});
  // A stock of a few rays' width would lose its shape however flat its surface.
  const double coarsest = std::min(thinnest / 8, Length(extent) / 64);
  RaySpacing chosen{std::min(coarsest, SpacingFor(tolerance, curvature)), tolerance, false};
  // Below the tolerance nothing is gained.
  chosen.spacing = std::max(chosen.spacing, std::min(tolerance, coarsest));
  const double wanted = chosen.spacing;
  while (MemoryFor(box, chosen.spacing) > kMemoryLimit) chosen.spacing *= 1.05;
  if (chosen.spacing > wanted) {
    const double share = chosen.spacing / kCurvatureShare;
    chosen.tolerance =
        std::max({tolerance, share * share / (4 * curvature.radius), chosen.spacing / 8,
                  chosen.spacing * curvature.tipSlope / kSpacingsOfATip});
    chosen.raised = chosen.tolerance > tolerance;
  }
  return chosen;
}

}  // namespace kernel
