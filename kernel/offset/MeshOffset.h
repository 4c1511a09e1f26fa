#pragma once

#include "kernel/common/StageProgress.h"
#include "kernel/offset/OffsetField.h"
#include "kernel/offset/OffsetPlan.h"
#include "kernel/sweep/CutMesh.h"

namespace kernel {

// The boundary of the points within `radius` of the surface, together with the inside of a closed
// one; for Side::kInside, of what is left of the solid when those points are taken away. The
// surface has a facet. Contoured from a lattice, settled on the exact surface, and merged where it
// is flat; warns of what is not within the plan's tolerance. Empty when nothing is left.
CutMesh MeshOffset(const PreparedSurface& surface, OffsetField::Side side, double radius,
                   const OffsetPlan& plan, StageProgress& progress);

}  // namespace kernel
