#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

// Boxes around a mesh's facets in a balanced tree over their places along a Morton curve. Boxes are
// kept in single precision, relative to the mesh's; rounding keeps the order of coordinates, so
// that boxes that overlap still do.
class FacetTree {
 public:
  using Index = SurfaceMesh::Index;

  // The mesh is not needed afterwards.
  explicit FacetTree(const SurfaceMesh& mesh);

  // Facets come in groups; a search for pairs can be split by group.
  std::size_t GroupCount() const { return m_groups; }

  // Calls visit(f, g), each pair once over all groups, for facets whose boxes have a point in
  // common, f from the given group. `visit` returns false to end the search.
  template <class Visit>
  void ForEachPair(std::size_t group, const Visit& visit) const;

  // Calls visit(f) for the facets whose boxes have a point in common with the given box.
  void ForEachWithin(const Box3& box, const std::function<void(Index)>& visit) const;

 private:
  static constexpr std::size_t kGroupSize = 8;

  struct Box {
    float low[3], high[3];

    bool Meets(const Box& other) const {
      return low[0] <= other.high[0] && other.low[0] <= high[0] && low[1] <= other.high[1] &&
             other.low[1] <= high[1] && low[2] <= other.high[2] && other.low[2] <= high[2];
    }
    void Include(const Box& other);
  };

  Box Rounded(const Box3& box) const;
  void SortAlongCurve(const SurfaceMesh& mesh, const Box3& bounds);
  void FillNodes();
  std::size_t GroupEnd(std::size_t group) const {
    return std::min((group + 1) * kGroupSize, m_order.size());
  }

  // Calls visit(group) for the groups from `first` on whose boxes meet `box`, while it returns
  // true.
  template <class Visit>
  void ForEachGroup(const Box& box, std::size_t first, const Visit& visit) const;

  Vec3 m_origin;
  std::vector<Index> m_order;
  std::vector<Box> m_boxes;  // of facets, in m_order
  std::size_t m_groups = 0, m_leaves = 1;
  std::vector<Box> m_nodes;  // 1 is the root, 2 n and 2 n + 1 are below n, m_leaves + g is group g
};

template <class Visit>
void FacetTree::ForEachGroup(const Box& box, std::size_t first, const Visit& visit) const {
  // The groups below node n of the level with `width` groups a node begin at (n - level) * width.
  struct Entry {
    std::size_t node, begin, width;
  };
  Entry stack[64];
  int depth = 0;
  stack[depth++] = {1, 0, m_leaves};
  while (depth > 0) {
    const Entry entry = stack[--depth];
    if (entry.begin + entry.width <= first || !m_nodes[entry.node].Meets(box)) continue;
    if (entry.width == 1) {
      if (!visit(entry.begin)) return;
      continue;
    }
    const std::size_t half = entry.width / 2;
    stack[depth++] = {2 * entry.node + 1, entry.begin + half, half};
    stack[depth++] = {2 * entry.node, entry.begin, half};
  }
}

template <class Visit>
void FacetTree::ForEachPair(std::size_t group, const Visit& visit) const {
  ForEachGroup(m_nodes[m_leaves + group], group, [&](std::size_t other) {
    for (std::size_t i = group * kGroupSize; i < GroupEnd(group); ++i) {
      const std::size_t begin = other == group ? i + 1 : other * kGroupSize;
      for (std::size_t j = begin; j < GroupEnd(other); ++j) {
        if (m_boxes[i].Meets(m_boxes[j]) && !visit(m_order[i], m_order[j])) return false;
      }
    }
    return true;
  });
}

}  // namespace kernel
