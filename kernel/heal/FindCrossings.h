#pragma once

#include <utility>
#include <vector>

#include "kernel/common/RunAside.h"
#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

using CrossingPairs = std::vector<std::pair<SurfaceMesh::Index, SurfaceMesh::Index>>;

// The pairs of facets (lower number first, ascending) that cross: whose insides pass through each
// other, or lie in one plane with an area in common and face the same way or share a side. Facets
// that touch do not cross, bodies that lie face to face included. Works on all cores; `advance` is
// called on the calling thread. With `firstOnly` the search ends at the first pair found, which one
// is left open.
CrossingPairs FindCrossings(const SurfaceMesh& mesh, bool firstOnly, const Tell& advance);

}  // namespace kernel
