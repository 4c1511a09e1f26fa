#pragma once

#include <functional>

#include "kernel/sweep/CutMesh.h"
#include "kernel/sweep/SurfaceCells.h"
#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// The surface of the model as a closed mesh that is edge-manifold by vertex number: one vertex for
// each loop of crossings in a cell, one quadrilateral (two facets, in the colour of the crossing)
// for each crossing of an edge of the lattice. Features that no node sees (in `cells`) are left
// out. `watch` hears the share of the work that is done. Empty when no node is solid.
//
// Source: dual contouring (see PlaceVertex.h) over the loops of dual marching cubes (see
// CellTopology.h).
CutMesh ContourModel(const DexelModel& model, const SurfaceCells& cells,
                     const SurfaceMakers& makers, const std::function<void(double)>& watch);

}  // namespace kernel
