#pragma once

#include <string>

#include "kernel/common/StageProgress.h"

namespace kernel {

// One whole run of IFHeal. Throws FatalError and formats::FileError, and what a callback throws;
// the output file is then as it was.
void HealSurface(double tolerance, const std::string& inputFile, const std::string& outputFile,
                 StageProgress& progress);

}  // namespace kernel
