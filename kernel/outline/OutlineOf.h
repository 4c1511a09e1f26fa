#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// The outline of what the edges wind around, on the grid: loops as TraceLoops gives them, without
// points on straight lines. Loops narrower than a few cells, which rounding makes where pieces
// meet, are left out. `tell` as in SnapEdges.
std::vector<Loop> OutlineOf(std::vector<PlaneEdge> edges, const std::function<void()>& tell);

}  // namespace kernel
