#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "formats/Mesh.h"
#include "host/measure/Point.h"

namespace host {

/// A surface that can be asked how far a point is from it and whether it lies inside.
///
/// A hierarchy of boxes about the facets, halved at the median of their centres. Distances are
/// exact to rounding. Inside is where the winding number is above one half: the solid angle of all
/// facets, those of far boxes taken for a dipole (Barill et al., Fast Winding Numbers for Soups and
/// Clouds, 2018), all of them one by one where that is too close to call. So neither sharp edges
/// nor small gaps turn the answer round, nor facets that all face inwards.
class FacetTree {
 public:
  /// Facets with a coordinate that is not finite are left out.
  explicit FacetTree(const formats::Mesh& mesh);

  struct Nearest {
    double distance = std::numeric_limits<double>::infinity();  // without any facet
    Point place{};
    std::int32_t facet = -1;  // for DistanceToFacet
  };
  Nearest NearestTo(const Point& p) const;

  /// Positive inside, negative outside: what the host calls material left standing and gouge. 0
  /// within a billionth of the diagonal, where rounding would decide. `nearest` is the answer of
  /// NearestTo for the same point.
  double SignedDistance(const Point& p, const Nearest& nearest) const;

  /// Of the facet that NearestTo named, or of any.
  double DistanceToFacet(std::int32_t facet, const Point& p) const;
  double Diagonal() const;

 private:
  struct Node {
    Point low{};
    Point high{};
    Point centre{};      // of the area
    Point areaNormal{};  // summed, each as long as its area
    double radius = 0;   // of a ball about the centre with all facets
    std::int32_t first = 0;
    std::int32_t count = 0;   // 0: not a leaf
    std::int32_t second = 0;  // the first child stands next to its parent
  };

  const Triangle& FacetAt(std::int32_t facet) const {
    return m_facets[static_cast<std::size_t>(facet)];
  }
  bool IsInside(const Point& p) const;
  std::int32_t Build(std::int32_t first, std::int32_t count);
  void Measure(Node& node, std::int32_t first, std::int32_t count) const;
  double WindingNumber(const Point& p, double farAway) const;

  std::vector<Triangle> m_facets;  // in the order of the leaves
  std::vector<Node> m_nodes;
};

}  // namespace host
