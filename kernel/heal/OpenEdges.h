#pragma once

#include <functional>
#include <vector>

#include "kernel/heal/MeshEdges.h"

namespace kernel {

// Sides that are alone on their edge, in the order of the edges.
std::vector<SurfaceMesh::Index> OpenSides(const MeshEdges& edges);

// The part of the surface that a repair may touch.
struct Reach {
  double tolerance;
  // By vertex; empty: all of them. Sides are within reach with both ends.
  std::vector<bool> vertices;
  // Called often; what it throws ends the repair.
  std::function<void()> check = [] {};

  bool Holds(SurfaceMesh::Index vertex) const { return vertices.empty() || vertices[vertex]; }
};

// The vertices of these sides, each once, ascending.
std::vector<SurfaceMesh::Index> VerticesOf(const SurfaceMesh& mesh,
                                           const std::vector<SurfaceMesh::Index>& sides);

}  // namespace kernel
