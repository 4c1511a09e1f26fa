#pragma once

#include <functional>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Merges facets of one colour that lie in one plane, by moving vertices of no importance into a
// neighbour: those inside a flat region, along the straight edge between two of them as well. The
// surface moves by no more than `flatness`; no facet turns over or gets a height of `least` or
// less. `watch` hears the share that is done, roughly. The outcome depends on the mesh only.
//
// Works in rounds of collapses that do not touch one another's neighbourhood, which keeps the
// number of edges at a vertex small.
void MergeFlat(HalfEdgeMesh& mesh, double flatness, double least,
               const std::function<void(double)>& watch);

}  // namespace kernel
