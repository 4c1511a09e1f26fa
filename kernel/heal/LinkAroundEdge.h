#pragma once

#include <vector>

#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// Links the open `sides` on one edge of more than two facets. The two sides of one patch belong
// together. Where as many of the rest run up as down, each is linked with the one that bounds the
// same wedge of solid. Elsewhere sides of closed patches come first, then the pairs that bend
// least, and the rest stays open. `patch`: for each facet the first of its patch; `isOpen`: by that
// first facet, whether the patch has an open edge.
void LinkAroundEdge(LinkedMesh& linked, const std::vector<SurfaceMesh::Index>& sides,
                    const std::vector<SurfaceMesh::Index>& patch, const std::vector<bool>& isOpen);

}  // namespace kernel
