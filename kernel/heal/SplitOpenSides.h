#pragma once

#include "kernel/heal/OpenEdges.h"

namespace kernel {

// Splits facets whose open side passes a vertex of another open edge closer than the tolerance, so
// that the side runs through that vertex. A vertex that close to an end of the side is left to
// joining. The pieces keep the facet's colour; one that would be
// lower than `least` or turn round is not made. True when anything was split.
bool SplitOpenSides(SurfaceMesh& mesh, const MeshEdges& edges, const Reach& reach, double least);

}  // namespace kernel
