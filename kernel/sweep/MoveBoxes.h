#pragma once

#include <vector>

#include "kernel/common/Box3.h"
#include "kernel/sweep/PathMoves.h"

namespace kernel {

// A box for each of `count` moves from number `first` on: around all that the tool passes through
// inside `clip` (finite), empty when that is nothing. Runs on all threads.
std::vector<Box3> BoxesWithin(const PathMoves& moves, std::size_t first, std::size_t count,
                              const Box3& clip);

}  // namespace kernel
