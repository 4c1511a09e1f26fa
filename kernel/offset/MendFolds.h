#pragma once

#include <functional>
#include <vector>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Meshes places anew where the facets fold or bridge a crease although their corners lie on the
// exact surface: turns, joins, moves and splits edges one by one, each time what makes the facets
// there fit best, until they fit or nothing helps. Looks at the facets in `suspects` and what it
// changes; returns the live facets that it has changed. The result does not depend on the number of
// threads. `watch` is called between two steps.
std::vector<HalfEdgeMesh::Index> MendFolds(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                                           const OffsetLimits& limits,
                                           const std::vector<HalfEdgeMesh::Index>& suspects,
                                           const std::function<void()>& watch);

}  // namespace kernel
