#pragma once

#include <functional>

#include "kernel/offset/CoverPoints.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

struct MissedLimits {
  double tolerance = 0;  // walls and gaps not much thicker than that are not looked for
  double distance = 0;   // points further than that from the mesh are missed
};

// Points of the exact surface that a mesh does not come near.
struct Missed {
  std::size_t points = 0;
  // Those that it comes near, but not much nearer than the tolerance, or not when it changes there.
  std::vector<UncoveredPoint> uncovered;
};

// Looks at one point of the exact surface for each facet of the field's mesh and side that is left:
// above its middle, and where another facet's body covers that, further up the slope of the
// distance, where gaps and walls that are just left have their middle. Runs on all threads; `watch`
// hears the share that is done.
Missed FindMissed(const OffsetMakers& makers, const HalfEdgeMesh& result,
                  const MissedLimits& limits, const std::function<void(double)>& watch);

// Those of the points that are further than `limit` from the facets, which are live.
std::vector<UncoveredPoint> StillUncovered(const HalfEdgeMesh& mesh,
                                           const std::vector<HalfEdgeMesh::Index>& facets,
                                           const std::vector<UncoveredPoint>& points, double limit);

}  // namespace kernel
