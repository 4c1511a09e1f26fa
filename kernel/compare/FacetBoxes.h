#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "kernel/common/Box3.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

// Boxes around a mesh's facets in a wide tree: each node holds the boxes of up to eight children
// side by side, so that a query looks at all of them with a few vector instructions. Boxes are in
// single precision and in coordinates of the tree's own, in which the mesh lies between -1 and 1;
// they are rounded outwards.
//
// Source: Wald, Benthin and Boulos, "Getting Rid of Packets: Efficient SIMD Single-Ray Traversal
// using Multi-branching BVHs" (2008); split by the surface area of boxes in bins, Wald, "On fast
// Construction of SAH-based Bounding Volume Hierarchies" (2007).
class FacetBoxes {
 public:
  static constexpr std::size_t kWidth = 8;
  static constexpr std::size_t kLeafSize = kWidth;

  // A point in the tree's coordinates, to single precision.
  struct Place {
    float at[3];
  };
  // Boxes by axis, then by child. One that is not there is empty.
  struct Boxes {
    float low[3][kWidth], high[3][kWidth];

    // The squared distance of a place to each box; infinite to one that is not there.
    void SquaredDistances(const Place& place, float* squares) const;
  };
  struct alignas(64) Node : Boxes {
    // The number of a leaf or of another node.
    std::uint32_t child[kWidth];
    bool isLeaf[kWidth];
  };

  // `watch` hears the share that is done and may throw to stop. The same mesh gives the same tree
  // whatever the number of threads. The mesh has at least one facet.
  FacetBoxes(const StockMesh& mesh, const std::function<void(double)>& watch);

  // Node 0 is the root.
  const std::vector<Node>& Nodes() const { return m_nodes; }
  // The boxes of the facets of slots `begin` to `end` - 1.
  struct alignas(64) Leaf : Boxes {
    std::uint32_t begin, end;
  };
  const std::vector<Leaf>& Leaves() const { return m_leaves; }
  // The facets in the order of the leaves: the facet of each slot.
  const std::vector<std::uint32_t>& Facets() const { return m_facets; }

  Place PlaceOf(const Vec3& point) const {
    Place place;
    for (int axis = 0; axis < 3; ++axis) {
      place.at[axis] = static_cast<float>((point[axis] - m_centre[axis]) * m_scale);
    }
    return place;
  }
  // Lengths in the tree's coordinates are as many times those of the mesh.
  double Scale() const { return m_scale; }
  // The largest coordinate of a place, or 1: what rounding to single precision is in proportion to.
  static double Largest(const Place& place);

 private:
  Vec3 m_centre;
  double m_scale = 1;
  std::vector<Node> m_nodes;
  std::vector<Leaf> m_leaves;
  std::vector<std::uint32_t> m_facets;
};

}  // namespace kernel
