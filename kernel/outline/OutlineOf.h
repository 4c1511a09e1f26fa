#pragma once

#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// The outline along boundary edges, on the grid: loops as TraceLoops gives them, without points on
// straight lines. Loops narrower than a few cells, which rounding makes where pieces meet, are left
// out.
std::vector<Loop> OutlineOf(std::vector<PlaneEdge> boundary);

}  // namespace kernel
