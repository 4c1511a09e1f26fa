#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "kernel/compare/FacetBoxes.h"

namespace kernel {

// The box of one facet, in the tree's coordinates, and boxes of several.
struct FacetBox {
  static constexpr float kMost = std::numeric_limits<float>::infinity();

  float low[3] = {kMost, kMost, kMost};
  float high[3] = {-kMost, -kMost, -kMost};
  std::uint32_t facet = 0;

  void Include(const float* point) {
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], point[axis]);
      high[axis] = std::max(high[axis], point[axis]);
    }
  }
  void Include(const FacetBox& other) {
    Include(other.low);
    Include(other.high);
  }
  // Twice the middle along an axis.
  float Middle(int axis) const { return low[axis] + high[axis]; }
  // Half the surface.
  float Area() const {
    const float x = high[0] - low[0];
    const float y = high[1] - low[1];
    const float z = high[2] - low[2];
    return x * y + y * z + z * x;
  }
};

// Makes the nodes of a tree over facet boxes, which it puts in the order of the leaves. Two of them
// may work side by side on ranges that do not overlap.
class FacetBoxBuilder {
 public:
  struct Range {
    std::size_t begin, end;
    std::size_t Size() const { return end - begin; }
  };
  // A child that is still to be built.
  struct Open {
    std::size_t node, child;
    Range range;
    std::size_t depth;  // of the child's node
  };

  explicit FacetBoxBuilder(std::vector<FacetBox>& boxes) : m_boxes(boxes) {}

  // Makes the nodes next to the root until about `wanted` children are left to be built; children
  // of fewer than `few` facets are built.
  std::vector<Open> BuildTop(std::size_t wanted, std::size_t few);
  // Makes all nodes for a range; the first one is the range's root.
  void BuildAll(const Range& range, std::size_t depth);

  std::vector<FacetBoxes::Node> TakeNodes() { return std::move(m_nodes); }
  std::vector<FacetBoxes::Leaf> TakeLeaves() { return std::move(m_leaves); }

 private:
  // Makes one node and names the children that are nodes.
  std::vector<Open> AddNode(const Range& range, std::size_t depth);
  void AddLeaf(const Range& range);
  void BuildBelow(const Open& open);
  // Parts a range in two at the best of some planes; returns where.
  std::size_t Part(const Range& range);
  FacetBox Bounds(const Range& range) const;

  std::vector<FacetBox>& m_boxes;
  std::vector<FacetBoxes::Node> m_nodes;
  std::vector<FacetBoxes::Leaf> m_leaves;
};

}  // namespace kernel
