#pragma once

#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// Drops points of loops as long as each loop stays within `distance` of what it was, and what it
// was within `distance` of it. Loops keep at least three points and their direction, and do not
// come to cross themselves or each other.
//
// Source: Douglas and Peucker, "Algorithms for the reduction of the number of points" (1973),
// between the loop's first point and the one farthest from it. Where two edges would cross, the
// loops that they belong to stay as they are.
std::vector<Loop> SimplifyLoops(const std::vector<Loop>& loops, double distance);

}  // namespace kernel
