#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// Splits edges where they cross, touch or nearly touch each other and joins what comes to lie on
// the same two points, so that few of them have more in common than an end; what is left to cross
// afterwards is for another round. No point of an edge moves by more than the diagonal of a grid
// cell. `edges` as JoinEqualEdges leaves them, before and after.
//
// Source: Hobby, "Practical segment intersection with finite precision output" (1999): crossings
// are rounded to the grid, and an edge that passes through the cell of an end or a crossing is led
// through that cell's centre. Crossings are computed in doubles, so that one may be rounded to the
// cell beside the right one; that is what leaves something for another round.
//
// `tell` is called now and then; what it throws passes on.
void SnapEdges(std::vector<PlaneEdge>& edges, const std::function<void()>& tell);

// Has every edge run forwards in the order of the sweep line, joins edges between the same two
// points, and leaves those out that have no length or change no winding. Sorted. `tell` as above.
void JoinEqualEdges(std::vector<PlaneEdge>& edges, const std::function<void()>& tell);

}  // namespace kernel
