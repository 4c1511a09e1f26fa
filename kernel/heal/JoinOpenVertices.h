#pragma once

#include "kernel/heal/OpenEdges.h"

namespace kernel {

// Joins vertices that lie on open edges and are closer to each other than the tolerance, the
// closest pairs first: edges that have found their partner take no further part, so that the two
// sides of a crack meet before neighbours along its rim do. The vertex with more facets stays where
// it is, at equal numbers the one that comes first; no vertex moves by the tolerance or more in
// all. The two ends of one side stay apart. Facets that lose a side this way are removed. True when
// anything was joined.
bool JoinOpenVertices(SurfaceMesh& mesh, const MeshEdges& edges, const Reach& reach);

}  // namespace kernel
