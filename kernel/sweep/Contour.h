#pragma once

#include <functional>

#include "kernel/sweep/CutMesh.h"
#include "kernel/sweep/LatticeCrossings.h"
#include "kernel/sweep/SurfaceCells.h"
#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// The surface in the cells as a closed mesh that is edge-manifold by vertex number: one vertex for
// each loop of crossings in a cell, one quadrilateral (two facets, in the colour of the crossing)
// for each crossing of an edge of the lattice. Features that no node sees (in `cells`) are left
// out. `watch` hears the share of the work that is done. Empty when no node is solid.
//
// Source: dual contouring (see PlaceVertex.h) over the loops of dual marching cubes (see
// CellTopology.h).
CutMesh ContourCells(const LatticeCrossings& crossings, const SurfaceCells& cells,
                     const SurfaceMakers& makers, const std::function<void(double)>& watch);

}  // namespace kernel
