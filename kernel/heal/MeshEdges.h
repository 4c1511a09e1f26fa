#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

// The sides of a mesh's facets, those on one edge together. A facet that names a vertex twice has
// none. Edges are found by counting sort on the lower vertex; a bucket holds so few sides that
// sorting it by the upper one costs next to nothing.
class MeshEdges {
 public:
  using Index = SurfaceMesh::Index;

  struct Side {
    std::uint64_t key;  // upper vertex, then whether the side runs down to the lower one, then side

    Index Upper() const { return static_cast<Index>(key >> 33); }
    bool IsDown() const { return (key >> 32 & 1) != 0; }
    Index Number() const { return static_cast<Index>(key); }  // 3 f + i
    Index Facet() const { return Number() / 3; }
  };

  explicit MeshEdges(const SurfaceMesh& mesh);

  // Calls visit(lower vertex, first side, past last side) for every edge; sides that run up come
  // first, each way in the order of the facets.
  template <class Visit>
  void ForEach(const Visit& visit) const {
    const auto vertices = static_cast<Index>(m_start.size() - 1);
    for (Index lower = 0; lower < vertices; ++lower) {
      const Side* begin = m_sides.data() + m_start[lower];
      const Side* const end = m_sides.data() + m_start[lower + 1];
      while (begin != end) {
        const Side* next = begin + 1;
        while (next != end && next->Upper() == begin->Upper()) ++next;
        visit(lower, begin, next);
        begin = next;
      }
    }
  }

 private:
  std::vector<Index> m_start;
  std::vector<Side> m_sides;
};

// Two sides that run through their edge in opposite ways.
inline bool AreOpposite(const MeshEdges::Side* begin, const MeshEdges::Side* end) {
  return end - begin == 2 && !begin[0].IsDown() && begin[1].IsDown();
}

}  // namespace kernel
