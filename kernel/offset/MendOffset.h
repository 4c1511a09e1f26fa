#pragma once

#include <functional>
#include <vector>

#include "kernel/offset/CoverPoints.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// What is further off the exact surface than the tolerance.
struct OffPlaces {
  std::size_t count = 0;  // middles of edges, centres of facets
  double farthest = 0;
};

// Mends what refining leaves: facets that fold or bridge a crease are meshed anew and what is new
// there is looked at again, until nothing is off or nothing helps any more; what is still off in
// the end is refined. `left`: facets that are known to be off, besides those that a look at each
// facet's centre shows; `uncovered`: points of the exact surface that are to get facets nearer to
// them. The mesh stays closed and edge-manifold; the result does not depend on the number of
// threads. `watch` hears the share that is done.
OffPlaces MendOffset(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
                     const std::vector<HalfEdgeMesh::Index>& left,
                     std::vector<UncoveredPoint> uncovered,
                     const std::function<void(double)>& watch);

}  // namespace kernel
