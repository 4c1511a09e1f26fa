#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// The outline along boundary edges, on the grid: loops as TraceLoops gives them, without points on
// straight lines. Loops narrower than a few cells, which rounding makes where pieces meet, are left
// out. `tell` is called now and then; what it throws passes on.
std::vector<Loop> OutlineOf(std::vector<PlaneEdge> boundary, const std::function<void()>& tell);

}  // namespace kernel
