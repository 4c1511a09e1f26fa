#pragma once

#include <functional>

#include "kernel/offset/OffsetField.h"
#include "kernel/sweep/CutMesh.h"

namespace kernel {

// Points of the exact surface that a mesh does not come near.
struct Missed {
  std::size_t points = 0;
  double farthest = 0;  // of all points that were looked at, missed or not
};

// Looks at one point of the exact surface for each facet of the field's mesh and side that is left:
// above its middle, and where another facet's body covers that, further up the slope of the
// distance, where gaps and walls that are just left have their middle. Those further than `limit`
// from `result` are missed. Runs on all threads; `watch` hears the share that is done.
Missed FindMissed(const OffsetField& field, const CutMesh& result, double limit,
                  const std::function<void(double)>& watch);

}  // namespace kernel
