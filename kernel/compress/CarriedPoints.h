#pragma once

#include <array>
#include <memory>
#include <vector>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Points of the original mesh, each with the facet that stands for it now: the middles of its
// edges, and the vertices that merging has taken out. Vertices come first in their order.
class CarriedPoints {
 public:
  using Index = HalfEdgeMesh::Index;

  explicit CarriedPoints(const HalfEdgeMesh& original);

  template <class Visit>
  void ForEachOf(Index facet, const Visit& visit) const {
    for (Index p = m_first[facet]; p != HalfEdgeMesh::kNone; p = m_next[p]) visit(p);
  }

  void Add(Index facet, Index point) {
    m_next[point] = m_first[facet];
    m_first[facet] = point;
  }
  void Clear(Index facet) { m_first[facet] = HalfEdgeMesh::kNone; }

  // The point lies halfway between these two vertices, which are one where it is a vertex.
  std::array<Index, 2> EndsOf(Index point) const {
    if (point < m_vertexCount) return {point, point};
    return (*m_edges)[point - m_vertexCount];
  }
  // `mesh`: one with the original's vertices.
  Vec3 At(const HalfEdgeMesh& mesh, Index point) const {
    const auto [a, b] = EndsOf(point);
    return a == b ? mesh.At(a) : 0.5 * (mesh.At(a) + mesh.At(b));
  }

 private:
  std::size_t m_vertexCount;
  std::shared_ptr<const std::vector<std::array<Index, 2>>> m_edges;  // common to all copies
  std::vector<Index> m_first, m_next;
};

}  // namespace kernel
