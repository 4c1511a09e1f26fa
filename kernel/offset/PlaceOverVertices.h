#pragma once

#include <functional>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Moves vertices of a contour to where the exact surface lies over vertices of the field's mesh, as
// far as that is nearly flat there, and lets others near the same one become one with them. Edges
// then run along those of the field's mesh, where the exact surface has its own, so that facets may
// be as large as theirs. No vertex goes further than `limits.reach`. The mesh stays closed and
// edge-manifold; the result does not depend on the number of threads. `watch` hears the share that
// is done.
void PlaceOverVertices(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
                       const std::function<void(double)>& watch);

}  // namespace kernel
