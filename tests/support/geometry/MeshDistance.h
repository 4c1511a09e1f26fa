#pragma once

#include <cstddef>
#include <vector>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

/// The point of the triangle a, b, c that is nearest to p.
Point NearestOnTriangle(const Point& p, const Point& a, const Point& b, const Point& c);

/// Distance from a point to the triangle a, b, c.
double DistanceToTriangle(const Point& p, const Point& a, const Point& b, const Point& c);

/// Distances from points to a mesh's surface, through a tree of boxes over its facets. Keeps a
/// reference to the mesh.
class MeshDistance {
 public:
  explicit MeshDistance(const formats::Mesh& mesh);

  struct Nearest {
    double distance;
    std::size_t facet;  // its number in the mesh
  };

  /// Infinite when the mesh has no facets.
  double To(const Point& point) const { return NearestTo(point).distance; }
  Nearest NearestTo(const Point& point) const;

 private:
  struct Node {
    Point low, high;
    std::size_t first, last;          // facets of a leaf, as places in m_order
    std::size_t left = 0, right = 0;  // 0 in a leaf
  };

  std::size_t Build(std::size_t first, std::size_t last);
  void Search(std::size_t node, const Point& point, Nearest& best) const;

  const formats::Mesh& m_mesh;
  std::vector<std::size_t> m_order;
  std::vector<Node> m_nodes;
};

}  // namespace support
