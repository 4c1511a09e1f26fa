#pragma once

#include <vector>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// The vertices that merging has taken out of a mesh, each with the facet that stands for it now.
class CarriedPoints {
 public:
  using Index = HalfEdgeMesh::Index;

  CarriedPoints(std::size_t vertices, std::size_t facets)
      : m_first(facets, HalfEdgeMesh::kNone), m_next(vertices, HalfEdgeMesh::kNone) {}

  template <class Visit>
  void ForEachOf(Index facet, const Visit& visit) const {
    for (Index v = m_first[facet]; v != HalfEdgeMesh::kNone; v = m_next[v]) visit(v);
  }

  void Add(Index facet, Index vertex) {
    m_next[vertex] = m_first[facet];
    m_first[facet] = vertex;
  }
  void Clear(Index facet) { m_first[facet] = HalfEdgeMesh::kNone; }

 private:
  std::vector<Index> m_first, m_next;
};

}  // namespace kernel
