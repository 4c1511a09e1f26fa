#pragma once

#include <array>
#include <cstddef>

#include "kernel/common/Box3.h"

namespace kernel {

// The nodes at which three families of rays meet: an axis-parallel lattice of one spacing whose
// outermost nodes lie outside the box it was made for. Its origin is shifted by fractions of the
// spacing that round dimensions do not share, so that the planes of ordinary parts miss the nodes.
//
// The family of axis a holds the rays parallel to a; u = a + 1 and v = a + 2 (cyclic) are its other
// axes, and ray (i, j) runs through the nodes with number i along u and j along v.
class DexelLattice {
 public:
  // `spacing` > 0. Throws FatalError when the lattice has more nodes than it can number.
  DexelLattice(const Box3& box, double spacing);

  double Spacing() const { return m_spacing; }
  int Nodes(int axis) const { return m_nodes[static_cast<std::size_t>(axis)]; }
  double Coordinate(int axis, int node) const { return m_origin[axis] + node * m_spacing; }
  Vec3 Node(int i, int j, int k) const {
    return {Coordinate(0, i), Coordinate(1, j), Coordinate(2, k)};
  }

  // The first node at or above the coordinate, 0 to Nodes(axis).
  int FirstNodeFrom(int axis, double coordinate) const;

  std::size_t RayCount(int axis) const {
    return static_cast<std::size_t>(Nodes((axis + 1) % 3)) *
           static_cast<std::size_t>(Nodes((axis + 2) % 3));
  }
  std::size_t RayIndex(int axis, int i, int j) const {
    return static_cast<std::size_t>(j) * static_cast<std::size_t>(Nodes((axis + 1) % 3)) +
           static_cast<std::size_t>(i);
  }

 private:
  Vec3 m_origin;
  double m_spacing;
  std::array<int, 3> m_nodes;
};

}  // namespace kernel
