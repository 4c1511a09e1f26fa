#pragma once

#include <vector>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// A point of the exact surface and the facet of a mesh that is nearest to it.
struct UncoveredPoint {
  Vec3 at;
  double distance = 0;
  HalfEdgeMesh::Index facet = 0;
};

// Gives the mesh a vertex at each of the points, the farthest first: narrow ridges and grooves that
// the facets pass over, each of which lies on the exact surface. Of a new vertex in the facet or on
// a side of it and of a corner that moves there, that is chosen which makes the facets fit best.
// Points whose facet another point has changed are left out. Returns the facets that have changed.
std::vector<HalfEdgeMesh::Index> CoverPoints(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                                             const OffsetLimits& limits,
                                             std::vector<UncoveredPoint> points);

}  // namespace kernel
