#pragma once

#include "kernel/common/StageProgress.h"
#include "kernel/sweep/StockMesh.h"

struct SurfaceTransfer;

namespace kernel {

// One whole run of IFSphoffset: gives the offset of the mesh by `distance` to `output`, from Reset
// to Close. `degrees`: see PlanOffset; 0 stands for 10. Throws FatalError or std::bad_alloc, before
// it has touched the output, when no result can be made, and what the callback object throws at any
// call. The one failure while the output is being filled is a null handle: FatalError.
void OffsetSurface(const StockMesh& given, double degrees, double distance, SurfaceTransfer& output,
                   StageProgress& progress);

}  // namespace kernel
