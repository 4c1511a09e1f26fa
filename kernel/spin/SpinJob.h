#pragma once

#include "curves/CurveTransfer.h"
#include "kernel/common/StageProgress.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

// One whole run of IFSpinsil. Throws FatalError and what a callback throws; the output has then
// been called for the last time.
void TraceSpunOutline(const StockMesh& given, double distance, CurveTransfer& output,
                      StageProgress& progress);

}  // namespace kernel
