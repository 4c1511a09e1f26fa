#pragma once

#include <functional>
#include <vector>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Brings facets to the exact surface whose vertices are on it: an edge that is off is turned where
// that is enough, else one of its ends moves onto the crease between them or it is split on the
// surface, and so is the longest edge of a facet that is off; turns first, then the longest ones.
// Facets take the colour of what their centres lie on. Looks at the facets in `due`, each once and
// live, and at what it changes, up to `rounds` times; returns the live facets that are left: what
// would turn facets over stays. The mesh stays closed and edge-manifold; the result does not depend
// on the number of threads. `watch` hears the share that is done.
std::vector<HalfEdgeMesh::Index> RefineOffset(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                                              const OffsetLimits& limits,
                                              std::vector<HalfEdgeMesh::Index> due, int rounds,
                                              const std::function<void(double)>& watch);

}  // namespace kernel
