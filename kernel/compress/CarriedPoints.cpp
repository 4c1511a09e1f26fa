#include "kernel/compress/CarriedPoints.h"

namespace kernel {

CarriedPoints::CarriedPoints(const HalfEdgeMesh& original)
    : m_vertexCount(original.VertexCount()), m_first(original.FacetCount(), HalfEdgeMesh::kNone) {
  std::vector<std::array<Index, 2>> edges;
  edges.reserve(3 * original.FacetCount() / 2);
  m_next.assign(m_vertexCount + edges.capacity(), HalfEdgeMesh::kNone);
  for (Index half = 0; half < 3 * original.FacetCount(); ++half) {
    if (half > original.Twin(half)) continue;
    Add(half / 3, static_cast<Index>(m_vertexCount + edges.size()));
    edges.push_back({original.Origin(half), original.Target(half)});
  }
  m_edges = std::make_shared<const std::vector<std::array<Index, 2>>>(std::move(edges));
}

}  // namespace kernel
