#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "kernel/common/RunAside.h"
#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// The boundary of what the edges wind around, as BoundaryEdges gives it: they are snapped until no
// two of them have more in common than an end. Their steps must sum up to 0 around each point.
// `tell` is called now and then; what it throws passes on. Throws FatalError when edges still cross
// after many rounds.
std::vector<PlaneEdge> UniteEdges(std::vector<PlaneEdge> edges, const std::function<void()>& tell);

// The same for what any of `count` groups of edges winds around, each by itself. Two groups are
// united first, then two of what came of that, and so on: where many cover the same places, most of
// their edges are gone before they can cross all the others. Groups with neighbouring numbers
// should be neighbours in the plane.
//
// `group` makes one group; it is called on many threads at a time. `tell` gets the share that is
// done, on the calling thread; what it throws ends the work and passes on.
std::vector<PlaneEdge> UniteGroups(std::size_t count,
                                   const std::function<std::vector<PlaneEdge>(std::size_t)>& group,
                                   const Tell& tell);

}  // namespace kernel
