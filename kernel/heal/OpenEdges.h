#pragma once

#include <vector>

#include "kernel/heal/MeshEdges.h"

namespace kernel {

// Sides that are alone on their edge, in the order of the edges.
std::vector<SurfaceMesh::Index> OpenSides(const MeshEdges& edges);

// The vertices of these sides, each once, ascending.
std::vector<SurfaceMesh::Index> VerticesOf(const SurfaceMesh& mesh,
                                           const std::vector<SurfaceMesh::Index>& sides);

}  // namespace kernel
