#pragma once

#include <vector>

#include "kernel/common/RunAside.h"
#include "kernel/compress/VertexStar.h"

namespace kernel {

// Proves for each facet of the original that it is within the tolerance of the merged mesh, and the
// other way round. Returns the vertices of the original, in ascending order, that facets without a
// proof stand on or for. Runs on all threads; `tell` hears the share that is done.
std::vector<HalfEdgeMesh::Index> ProveNear(const HalfEdgeMesh& original, const MergedMesh& merged,
                                           double tolerance, const Tell& tell);

}  // namespace kernel
