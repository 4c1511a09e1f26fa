#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kernel/outline/PlaneEdge.h"
#include "kernel/sweep/ExactOrientation.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

// A straight piece in the plane of x and r, not on a grid yet.
struct SpunEdge {
  Point2 from, to;
  Winding step;
};

// The edges around what these of a mesh's facets cover when they are spun about the x axis, so that
// at each place `cover` says how many parts of facets come there. Facets that are neighbours and
// keep their sense cancel along their common edge; what is left of each edge is made of straight
// pieces on the side where less is covered, no further than `tolerance` from its arc: what is
// covered never shrinks, and of two sets of facets none leaves a gap along what they share.
std::vector<SpunEdge> SpunBorders(const StockMesh& mesh, std::span<const std::uint32_t> facets,
                                  double tolerance);

// The section of a closed mesh with the half plane y >= 0, z = 0, so that at each place `solid`
// says how often the mesh winds around it. What is no place of the surface when it is spun is
// inside the spun body just where it is inside there. What lies at y < 0 is drawn up to the axis,
// which closes the section along it.
std::vector<SpunEdge> SectionEdges(const StockMesh& mesh);

}  // namespace kernel
