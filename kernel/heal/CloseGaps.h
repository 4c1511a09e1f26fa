#pragma once

#include "kernel/heal/MeshEdges.h"

namespace kernel {

// Joins vertices on open edges and splits sides that pass one, both within `tolerance`, in turn
// until there is nothing more to close. Returns the edges of the mesh as it is then.
MeshEdges CloseGaps(SurfaceMesh& mesh, MeshEdges edges, double tolerance, double least);

}  // namespace kernel
