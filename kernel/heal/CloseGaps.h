#pragma once

#include "kernel/heal/OpenEdges.h"

namespace kernel {

// Joins vertices on open edges and splits sides that pass one, both within reach, in turn
// until there is nothing more to close. Returns the edges of the mesh as it is then.
MeshEdges CloseGaps(SurfaceMesh& mesh, MeshEdges edges, const Reach& reach, double least);

}  // namespace kernel
