#pragma once

#include <functional>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// What is further off the exact surface than the tolerance.
struct OffPlaces {
  std::size_t count = 0;  // vertices, middles of edges, centres of facets
  double farthest = 0;
};

// Brings a contour to the exact surface: vertices move onto it, or where it is curved a little
// beyond it; an edge that is off is turned where that is enough, else one of its ends moves onto
// the crease between them or it is split on the surface, and so is the longest edge of a facet that
// is off; the longest ones first. Facets take the colour of what their centres lie on. What would
// turn facets over is left, and told. The mesh stays closed and edge-manifold; the result does not
// depend on the number of threads. `watch` hears the share that is done.
OffPlaces RefineOffset(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
                       const std::function<void(double)>& watch);

}  // namespace kernel
