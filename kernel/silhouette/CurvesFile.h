#pragma once

#include <string>
#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// Writes a binary curves file in the tree variant: the loops' points at the height z, loop by loop,
// and one curve a loop, its tree fields 0. Throws formats::FileError when it cannot be written or
// counted.
void WriteTreeCurves(const std::string& path, const std::vector<Loop>& loops, double z);

}  // namespace kernel
