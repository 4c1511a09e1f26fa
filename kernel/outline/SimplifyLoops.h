#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// Drops points of loops as long as each loop stays within `distance` of what it was, and what it
// was within `distance` of it. Loops keep at least three points and their direction, and do not
// come to cross themselves or each other.
//
// Source: Douglas and Peucker, "Algorithms for the reduction of the number of points" (1973),
// between the loop's first point and the one farthest from it. Where two edges would cross, the
// loops that they belong to stay as they are. `tell` is called now and then; what it throws passes
// on.
std::vector<Loop> SimplifyLoops(const std::vector<Loop>& loops, double distance,
                                const std::function<void()>& tell);

}  // namespace kernel
