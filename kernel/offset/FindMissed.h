#pragma once

#include <functional>

#include "kernel/offset/OffsetField.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

struct MissedLimits {
  double tolerance = 0;  // walls and gaps not much thicker than that are not looked for
  double distance = 0;   // points further than that from the mesh are missed
};

// Points of the exact surface that a mesh does not come near.
struct Missed {
  std::size_t points = 0;
  double farthest = 0;  // of all points that were looked at, missed or not
};

// Looks at one point of the exact surface for each facet of the field's mesh and side that is left:
// above its middle, and where another facet's body covers that, further up the slope of the
// distance, where gaps and walls that are just left have their middle. Runs on all threads; `watch`
// hears the share that is done.
Missed FindMissed(const OffsetField& field, const HalfEdgeMesh& result, const MissedLimits& limits,
                  const std::function<void(double)>& watch);

}  // namespace kernel
