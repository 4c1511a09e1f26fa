#include "support/geometry/MeshDeviation.h"

#include <algorithm>
#include <array>
#include <vector>

#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"

namespace support {
namespace {

using Triangle = std::array<Point, 3>;

Point Middle(const Point& a, const Point& b) {
  return {(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2};
}

Point CentreOf(const Triangle& part) {
  const Point sum = Plus(Plus(part[0], part[1]), part[2]);
  return {sum[0] / 3, sum[1] / 3, sum[2] / 3};
}

double SizeOf(const Triangle& part) {
  return std::max({Length(Minus(part[1], part[0])), Length(Minus(part[2], part[1])),
                   Length(Minus(part[0], part[2]))});
}

void Quarter(const Triangle& part, std::vector<Triangle>& parts) {
  const Point ab = Middle(part[0], part[1]);
  const Point bc = Middle(part[1], part[2]);
  const Point ca = Middle(part[2], part[0]);
  parts.push_back({part[0], ab, ca});
  parts.push_back({ab, part[1], bc});
  parts.push_back({ca, bc, part[2]});
  parts.push_back({ab, bc, ca});
}

// A plane through a side of the facet, upright on it.
struct Side {
  Point on, outward;
  double Above(const Point& point) const { return Dot(outward, Minus(point, on)); }
};

std::array<Side, 3> SidesOf(const Triangle& facet) {
  const Point normal = Cross(Minus(facet[1], facet[0]), Minus(facet[2], facet[0]));
  std::array<Side, 3> sides;
  for (std::size_t i = 0; i < 3; ++i) {
    const Point outward = Cross(Minus(facet[(i + 1) % 3], facet[i]), normal);
    sides[i] = {facet[i], Plus({}, outward, 1 / Length(outward))};
  }
  return sides;
}

// How far the part reaches to that side of the plane to which it reaches less.
double CutDepth(const Triangle& part, const Side& side) {
  double below = 0;
  double above = 0;
  for (const Point& corner : part) {
    below = std::max(below, -side.Above(corner));
    above = std::max(above, side.Above(corner));
  }
  return std::min(below, above);
}

// The corner that lies alone on its side of the plane is cut off.
void Cut(const Triangle& part, const Side& side, std::vector<Triangle>& parts) {
  std::size_t alone = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    const bool isAbove = side.Above(part[i]) > 0;
    if (isAbove != (side.Above(part[(i + 1) % 3]) > 0) &&
        isAbove != (side.Above(part[(i + 2) % 3]) > 0)) {
      alone = i;
    }
  }
  const Point& a = part[alone];
  const Point& b = part[(alone + 1) % 3];
  const Point& c = part[(alone + 2) % 3];
  const auto towards = [&](const Point& end) {
    const double share = side.Above(a) / (side.Above(a) - side.Above(end));
    return Plus(a, Minus(end, a), share);
  };
  const Point ab = towards(b);
  const Point ca = towards(c);
  parts.push_back({a, ab, ca});
  parts.push_back({ab, b, c});
  parts.push_back({ab, c, ca});
}

// Along a side of the facet that it is near where that cuts off a good piece, else into quarters.
void Split(const Triangle& part, const Triangle& near, std::vector<Triangle>& parts) {
  constexpr double kGoodCut = 0.02;
  const std::array<Side, 3> sides = SidesOf(near);
  const auto deepest = std::max_element(
      sides.begin(), sides.end(),
      [&](const Side& a, const Side& b) { return CutDepth(part, a) < CutDepth(part, b); });
  if (CutDepth(part, *deepest) > kGoodCut * SizeOf(part)) {
    Cut(part, *deepest, parts);
  } else {
    Quarter(part, parts);
  }
}

class Search {
 public:
  Search(const formats::Mesh& from, const formats::Mesh& to, double resolution)
      : m_from(from), m_to(to), m_distance(to), m_resolution(resolution) {}

  Farthest Run() {
    // The more is reached at first, the less has to be split.
    for (const formats::Facet& facet : m_from.facets) {
      for (const Point& corner : Corners(m_from, facet)) Reach(m_distance.To(corner));
      Reach(m_distance.To(Centre(m_from, facet)));
    }
    double bound = 0;
    std::vector<Triangle> parts;
    for (const formats::Facet& facet : m_from.facets) {
      parts.push_back(Corners(m_from, facet));
      while (!parts.empty()) {
        const Triangle part = parts.back();
        parts.pop_back();
        Triangle near;
        const double most = MostOf(part, near);
        if (most <= m_reached + m_resolution) {
          bound = std::max(bound, most);
        } else {
          Split(part, near, parts);
        }
      }
    }
    return {m_reached, std::max(m_reached, bound)};
  }

 private:
  void Reach(double distance) { m_reached = std::max(m_reached, distance); }

  // A distance that no point of the part exceeds, and the facet of the other mesh that it is near.
  double MostOf(const Triangle& part, Triangle& facet) {
    const Point centre = CentreOf(part);
    const MeshDistance::Nearest nearest = m_distance.NearestTo(centre);
    Reach(nearest.distance);
    double radius = 0;
    double toFacet = 0;
    facet = Corners(m_to, m_to.facets[nearest.facet]);
    for (const Point& corner : part) {
      radius = std::max(radius, Length(Minus(corner, centre)));
      toFacet = std::max(toFacet, DistanceToTriangle(corner, facet[0], facet[1], facet[2]));
    }
    return std::min(nearest.distance + radius, toFacet);
  }

  const formats::Mesh& m_from;
  const formats::Mesh& m_to;
  MeshDistance m_distance;
  double m_resolution, m_reached = 0;
};

}  // namespace

Farthest FarthestFrom(const formats::Mesh& from, const formats::Mesh& to, double resolution) {
  return Search(from, to, resolution).Run();
}

}  // namespace support
