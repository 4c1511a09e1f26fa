#include "kernel/heal/OpenEdges.h"

#include <algorithm>

namespace kernel {

std::vector<SurfaceMesh::Index> OpenSides(const MeshEdges& edges) {
  std::vector<SurfaceMesh::Index> sides;
  edges.ForEach([&](SurfaceMesh::Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
    if (end - begin == 1) sides.push_back(begin->Number());
  });
  return sides;
}

std::vector<SurfaceMesh::Index> VerticesOf(const SurfaceMesh& mesh,
                                           const std::vector<SurfaceMesh::Index>& sides) {
  std::vector<SurfaceMesh::Index> vertices;
  vertices.reserve(2 * sides.size());
  for (const SurfaceMesh::Index side : sides) {
    vertices.push_back(mesh.Origin(side));
    vertices.push_back(mesh.Target(side));
  }
  std::sort(vertices.begin(), vertices.end());
  vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
  return vertices;
}

}  // namespace kernel
