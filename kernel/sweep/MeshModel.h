#pragma once

#include "kernel/common/Reporter.h"
#include "kernel/sweep/CutMakers.h"
#include "kernel/sweep/CutMesh.h"

namespace kernel {

// The mesh of what is left of a stock in `stockBox`, to within `tolerance` of the exact surface:
// contoured from the rays, settled on the surface, and merged where it is flat. Warns of what is
// not so. Empty when nothing is left.
CutMesh MeshModel(const DexelModel& model, const CutMakers& makers, const Box3& stockBox,
                  double tolerance, Reporter& reporter);

}  // namespace kernel
