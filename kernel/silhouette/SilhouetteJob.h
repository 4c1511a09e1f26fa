#pragma once

#include <string>

#include "kernel/common/StageProgress.h"

namespace kernel {

// One whole run of IFSilhouette. Throws FatalError and formats::FileError, and what a callback
// throws; the output file is then as it was.
void TraceSilhouette(const std::string& inputFile, const std::string& outputFile, double distance,
                     StageProgress& progress);

}  // namespace kernel
