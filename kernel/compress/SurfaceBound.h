#pragma once

#include <array>
#include <cstddef>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Proves that triangles lie near a closed mesh. Distances are to the facets themselves, so that a
// proof holds however the mesh is shaped; where the walk over it picks a facet that is not the
// nearest one, a proof may be missed.
//
// The distance to one facet is a convex function: a piece whose corners are all within the
// tolerance of one facet is so as a whole. A piece for which no facet does that is cut along the
// planes through the sides of a facet near it, each halfway between that facet and its neighbour.
class SurfaceBound {
 public:
  using Index = HalfEdgeMesh::Index;

  // Keeps a reference to the mesh.
  explicit SurfaceBound(const HalfEdgeMesh& mesh) : m_mesh(mesh) {}

  // Whether all of the triangle is known to be within the tolerance of the mesh. `hint`: a facet
  // not far from it.
  bool IsWithin(const std::array<Vec3, 3>& triangle, double tolerance, Index hint) const;

  // A facet to which `point` is as near as to those around it, found by walking from `hint`.
  Index WalkTowards(const Vec3& point, Index hint) const;

  std::array<Vec3, 3> CornersOf(Index facet) const;

 private:
  const HalfEdgeMesh& m_mesh;
};

}  // namespace kernel
