#pragma once

#include "kernel/sweep/DexelModel.h"
#include "kernel/sweep/SurfaceCells.h"

namespace kernel {

// Stretches of solid and gaps on the rays that are longer than `least`, hold no node and are not
// beside the surface that the nodes see: walls and gaps thinner than the ray spacing, which the
// mesh leaves out. (The tip of a ridge between two nodes is beside the surface: the vertex below
// it reaches up.) One wall counts once for each ray through it.
std::size_t CountUnseenFeatures(const DexelModel& model, const SurfaceCells& cells, double least);

}  // namespace kernel
