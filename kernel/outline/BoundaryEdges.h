#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// The edges between inside and outside, each directed so that the inside is on its left, in the
// order of the sweep line; nothing when two edges have more in common than an end. `edges` as
// JoinEqualEdges leaves them; their steps must sum up to 0 around each point.
//
// Method: a line swept along x keeps the edges that it crosses in order; what is wound around the
// lowest place between two of them is carried upwards. Edges that meet are neighbours in the line
// before it comes to where they do: Shamos and Hoey, "Geometric intersection problems" (1976).
//
// `tell` is called now and then; what it throws passes on.
std::optional<std::vector<PlaneEdge>> BoundaryEdges(const std::vector<PlaneEdge>& edges,
                                                    const std::function<void()>& tell);

}  // namespace kernel
