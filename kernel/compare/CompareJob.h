#pragma once

#include "kernel/common/Reporter.h"
#include "kernel/compare/CompareBands.h"
#include "kernel/sweep/StockMesh.h"

struct SurfaceTransfer;

namespace kernel {

// Plays the part into `output`, from Reset to Close, in the colours of the bands that its
// deviations from the stock lie in. Throws FatalError or std::bad_alloc, before it has touched the
// output, when no result can be made, and what the callback object throws at any call. The one
// failure while the output is being filled is a null handle: FatalError.
void ComparePart(const StockMesh& part, const StockMesh& stock, CompareBands bands,
                 SurfaceTransfer& output, Reporter& reporter);

}  // namespace kernel
