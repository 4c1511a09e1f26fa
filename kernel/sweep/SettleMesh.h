#pragma once

#include <cstddef>
#include <functional>

#include "kernel/sweep/SurfaceSurvey.h"

namespace kernel {

// What is further off the exact surface than the tolerance.
struct Unsettled {
  std::size_t places = 0;  // vertices, middles of edges, centres of facets
  double farthest = 0;
};

// Brings a contour of the rays, which does not know what runs between them, to the exact surface:
// vertices that are off move onto it, edges and facets whose middles are off get a vertex there,
// and facets in a colour that nothing near them has take that of what they lie on. What would turn
// facets over or does not help is left, and told. The mesh stays closed and edge-manifold; the
// result does not depend on the number of threads. `watch` hears the share that is done.
Unsettled SettleMesh(HalfEdgeMesh& mesh, const SurfaceSurvey& survey, const SettleLimits& limits,
                     const std::function<void(double)>& watch);

}  // namespace kernel
