#pragma once

#include "kernel/common/Box3.h"
#include "kernel/common/Reporter.h"
#include "kernel/sweep/DexelModel.h"
#include "kernel/sweep/PathMoves.h"

namespace kernel {

// Takes what the moves sweep out of the model, whose solid lies in `box`. Each ray meets the moves
// in program order whatever the number of threads. Reports its progress in the open stage; stops
// with what the report throws. Returns whether any solid was removed.
bool SubtractMoves(const PathMoves& moves, const Box3& box, DexelModel& model, Reporter& reporter);

}  // namespace kernel
