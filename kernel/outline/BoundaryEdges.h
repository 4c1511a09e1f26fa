#pragma once

#include <vector>

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// The edges between inside and outside, each directed so that the inside is on its left, in the
// order of the sweep line. `edges` as SnapEdges leaves them; their steps must sum up to 0 around
// each point. Method: a line swept along x keeps the edges that it crosses in order; what is wound
// around the lowest place between two of them is carried upwards.
std::vector<PlaneEdge> BoundaryEdges(const std::vector<PlaneEdge>& edges);

}  // namespace kernel
