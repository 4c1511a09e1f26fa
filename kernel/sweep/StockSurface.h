#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "kernel/sweep/StockMesh.h"

namespace kernel {

// The nearest point of the stock's surface to some point.
struct NearestOnStock {
  double distance = 0;  // below 0 inside the stock
  Vec3 point;
  std::uint32_t facet = 0;
};

// Signed distances to a closed stock. Keeps a reference to the mesh.
//
// Source of the sign: Baerentzen and Aanaes, Signed Distance Computation Using the Angle Weighted
// Pseudonormal (2005).
class StockSurface {
 public:
  // `overlapping`: bodies of the stock run into each other, so that facets lie inside it. Then the
  // side of a facet tells nothing, and every point counts as inside.
  StockSurface(const StockMesh& mesh, bool overlapping);

  const StockMesh& Mesh() const { return m_mesh; }
  const Vec3& NormalOf(std::uint32_t facet) const { return m_facetNormals[facet]; }

  // The nearest point on one of the facets; none when there are no facets.
  std::optional<NearestOnStock> Nearest(const Vec3& point,
                                        std::span<const std::uint32_t> facets) const;

 private:
  const StockMesh& m_mesh;
  bool m_overlapping;
  std::vector<Vec3> m_facetNormals;
  std::vector<Vec3> m_edgeNormals;    // 3 a facet: edge i runs from its corner i to the next
  std::vector<Vec3> m_vertexNormals;  // weighted by the facets' angles
};

}  // namespace kernel
