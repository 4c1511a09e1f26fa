#pragma once

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Removes facets whose height is at most `least`: where an edge is no longer than that its ends
// become one, else the facet's longest edge is turned. No vertex moves by more than `least`.
// Returns how many such facets remain because a change would break the mesh.
std::size_t RemoveSlivers(HalfEdgeMesh& mesh, double least);

// Twice the area over the longest edge; 0 when all corners are one point.
double FacetHeight(const Vec3& a, const Vec3& b, const Vec3& c);

}  // namespace kernel
