#pragma once

#include <functional>

#include "kernel/compress/VertexStar.h"

namespace kernel {

// Moves vertices into neighbours, cheap ones first, until none can go that way. Works in rounds of
// collapses that have no vertex of their stars in common, on all threads; the outcome does not
// depend on how many. `watch` hears the share that is done, roughly.
void CollapseInRounds(MergedMesh& merged, const CompressLimits& limits,
                      const std::function<void(double)>& watch);

}  // namespace kernel
