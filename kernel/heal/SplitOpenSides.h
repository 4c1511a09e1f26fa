#pragma once

#include "kernel/heal/MeshEdges.h"

namespace kernel {

// Splits facets whose open side passes a vertex of another open edge closer than `tolerance`, so
// that the side runs through that vertex. The pieces keep the facet's colour; one that would be
// lower than `least` or turn round is not made. True when anything was split.
bool SplitOpenSides(SurfaceMesh& mesh, const MeshEdges& edges, double tolerance, double least);

}  // namespace kernel
