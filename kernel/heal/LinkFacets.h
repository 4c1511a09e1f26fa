#pragma once

#include "kernel/heal/LinkedMesh.h"
#include "kernel/heal/MeshEdges.h"

namespace kernel {

// Turns facets so that neighbours agree, each connected patch the way that most of its facets
// faced, and links the sides on each edge two by two. On an edge of more than two facets those are
// linked that bound the same solid; facets that are one too many there stay open. A patch that has
// no two sides (a Möbius strip) is left open where its ends meet.
LinkedMesh LinkFacets(SurfaceMesh mesh, const MeshEdges& edges);

}  // namespace kernel
