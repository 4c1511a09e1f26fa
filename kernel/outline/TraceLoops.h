#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

using Loop = std::vector<Point2>;

// Chains boundary edges (inside on the left, as often into a point as out of it) into closed loops
// that touch no point twice: around the outside of a region counter-clockwise, around a hole
// clockwise. A loop starts at its first point in the order of the sweep line; loops are in the
// order of those points, the one around more first. `tell` is called now and then; what it throws
// passes on.
std::vector<Loop> TraceLoops(std::vector<PlaneEdge> boundary, const std::function<void()>& tell);

// Twice the area, positive counter-clockwise.
double DoubledArea(const Loop& loop);
double Perimeter(const Loop& loop);

}  // namespace kernel
