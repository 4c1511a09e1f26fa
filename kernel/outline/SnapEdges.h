#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// Splits and moves edges so that any two of them have no more in common than an end; edges between
// the same two points become one, from the earlier to the later point in the order of the sweep
// line, and those that change no winding go. No point of an edge moves by more than the diagonal of
// a grid cell for each round that it takes.
//
// Source: Hobby, "Practical segment intersection with finite precision output" (1999): crossings
// are rounded to the grid, and an edge that passes through the cell of an end or a crossing is led
// through that cell's centre. Crossings are computed in doubles, so that one may be rounded to the
// cell beside the right one; what is left to cross after that is split again.
//
// `tell` is called now and then; what it throws passes on. Throws FatalError when edges still cross
// after many rounds.
void SnapEdges(std::vector<PlaneEdge>& edges, const std::function<void()>& tell);

// Has every edge run forwards in the order of the sweep line, joins edges between the same two
// points, and leaves those out that have no length or change no winding. Sorted.
void JoinEqualEdges(std::vector<PlaneEdge>& edges);

// Whether the insides of two edges cross in one point.
bool CrossProperly(const PlaneEdge& a, const PlaneEdge& b);

}  // namespace kernel
