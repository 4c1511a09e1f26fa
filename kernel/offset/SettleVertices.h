#pragma once

#include <functional>
#include <vector>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Moves the vertices of a contour onto the exact surface or, where it is curved, a little beyond
// it, so that facets may be larger. Returns those that stay off, as each place for them would turn
// facets over. Runs on all threads; `watch` hears the share that is done.
std::vector<HalfEdgeMesh::Index> SettleVertices(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                                                const OffsetLimits& limits,
                                                const std::function<void(double)>& watch);

}  // namespace kernel
