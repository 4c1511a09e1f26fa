#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kernel/common/Box3.h"
#include "kernel/common/Vec3.h"

namespace kernel {

// Facets lower than this share of the mesh's diagonal are slivers, bodies thinner than it are flat.
constexpr double kLeastHeight = 1e-9;

// An indexed triangle mesh while it is mended. Nothing is promised of it but that its vertex
// numbers are in range.
struct SurfaceMesh {
  using Index = std::uint32_t;
  static constexpr Index kNone = UINT32_MAX;

  struct Facet {
    std::array<Index, 3> vertices;
    std::uint8_t colour;

    bool RepeatsVertex() const {
      return vertices[0] == vertices[1] || vertices[1] == vertices[2] || vertices[2] == vertices[0];
    }
    bool Has(Index vertex) const {
      return vertices[0] == vertex || vertices[1] == vertex || vertices[2] == vertex;
    }
  };

  std::vector<Vec3> vertices;
  std::vector<Facet> facets;

  // Side 3 f + i runs from corner i of facet f to its next corner.
  static Index Next(Index side) { return side % 3 == 2 ? side - 2 : side + 1; }
  static Index Previous(Index side) { return side % 3 == 0 ? side + 2 : side - 1; }
  Index Origin(Index side) const { return facets[side / 3].vertices[side % 3]; }
  Index Target(Index side) const { return Origin(Next(side)); }

  const Vec3& Corner(const Facet& facet, std::size_t i) const {
    return vertices[facet.vertices[i]];
  }
  // Twice the area, along the side that the facet faces.
  Vec3 Normal(const Facet& facet) const {
    const Vec3& a = Corner(facet, 0);
    return Cross(Corner(facet, 1) - a, Corner(facet, 2) - a);
  }
  // Twice the area over the longest side; 0 when all corners are one point.
  double Height(const Facet& facet) const;

  Box3 Bounds() const;  // of the vertices that facets use
};

}  // namespace kernel
