#pragma once

#include <functional>
#include <vector>

#include "formats/Mesh.h"
#include "kernel/outline/PlaneEdge.h"

namespace kernel {

// The edges of the facets' shadows along z, all turned counter-clockwise, so that the winding at a
// point says how many facets lie over it. Edges between two facets that face the same way cancel;
// upright facets have no shadow. `points`: the mesh's vertices on the grid, in their order.
// `tell` is called now and then; what it throws passes on.
std::vector<PlaneEdge> ShadowEdges(const formats::Mesh& mesh, const std::vector<Point2>& points,
                                   const std::function<void()>& tell);

}  // namespace kernel
