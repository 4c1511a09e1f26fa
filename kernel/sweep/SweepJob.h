#pragma once

#include <string>

#include "kernel/common/Reporter.h"
#include "kernel/sweep/StockMesh.h"

struct SurfaceTransfer;

namespace kernel {

// Sweeps the paths of an interchange file through the stock and gives the result to `output`, from
// Reset to Close. Throws FatalError, formats::FileError or std::bad_alloc,
// before it has touched the output, when no result can be made, and what the callback object throws
// at any call. The one failure while the output is being filled is a null handle: FatalError.
void SweepStock(const StockMesh& stock, const std::string& pathFile, SurfaceTransfer& output,
                Reporter& reporter);

}  // namespace kernel
