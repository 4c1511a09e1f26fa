#pragma once

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// What two edges on the grid have in common, decided exactly.

bool HasEnd(const PlaneEdge& edge, const Point2& point);

// 1 when the point is left of the edge's line, -1 right of it, 0 on it. The coordinates may be
// halves.
int Side(const PlaneEdge& edge, const Point2& point);

// Whether the insides of two edges cross in one point.
bool CrossProperly(const PlaneEdge& a, const PlaneEdge& b);

// Whether two edges, each of which runs forwards in the order of the sweep line, have more in
// common than an end.
bool MeetBeyondEnds(const PlaneEdge& a, const PlaneEdge& b);

}  // namespace kernel
