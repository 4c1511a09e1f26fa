#pragma once

#include "kernel/sweep/DexelModel.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

// Fills the rays of one family with the inside of a closed mesh: where its winding number is at
// least 1. Each ray through an edge or a vertex counts as shifted by an infinitely small step
// (u + e, v + e squared) and is then decided exactly, so that it enters as often as it leaves. True
// when a ray runs where the winding number is neither 0 nor 1.
// Source: Edelsbrunner and Muecke, Simulation of Simplicity (1990).
bool RasteriseStock(const StockMesh& mesh, int axis, DexelModel& model);

}  // namespace kernel
