#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "kernel/common/Vec3.h"

namespace kernel {

using LoopTriangles = std::vector<std::array<std::uint32_t, 3>>;  // places in the loop

// Spans a closed loop of points by triangles between them, none lower than `least` and none with a
// side across the loop from i to j, i < j, for which mayJoin(i, j) is false. Triangles run the same
// way round as the loop. Empty when there are none.
// Method: least total area, and of equal areas the least total of the squared sides, by the dynamic
// programme of Barequet and Sharir, "Filling gaps in the boundary of a polyhedron", CAGD 12 (1995).
// Cubic in the number of points.
LoopTriangles TriangulateLoop(const std::vector<Vec3>& points, double least,
                              const std::function<bool(std::size_t, std::size_t)>& mayJoin);

// The same for a long loop, of near-least area, among the triangles of a Delaunay tetrahedrisation
// of its points. Sides across the loop are the caller's to check.
LoopTriangles TriangulateLongLoop(const std::vector<Vec3>& points);

}  // namespace kernel
