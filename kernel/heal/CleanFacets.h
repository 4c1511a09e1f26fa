#pragma once

#include "kernel/heal/MeshEdges.h"

namespace kernel {

// Removes facets that name a vertex twice or whose height is below `least`. Returns by vertex
// whether it was a corner of one that was removed, nothing when none was.
std::vector<bool> RemoveSliverFacets(SurfaceMesh& mesh, double least);

// Of facets with the same three vertices that face the same way the first stays. Two that face
// each other stay both only where two bodies touch: the doubled region is then bordered all round
// by edges on which an even number of single facets meet; elsewhere the first of them stays.
// Returns how many were removed; `edges` are those of the mesh as it comes.
std::size_t RemoveDuplicateFacets(SurfaceMesh& mesh, const MeshEdges& edges);

}  // namespace kernel
