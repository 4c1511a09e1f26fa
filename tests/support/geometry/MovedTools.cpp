#include "support/geometry/MovedTools.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"

namespace support {
namespace {

// Lowest value of a convex function on 0 to 1.
template <typename Function>
double Lowest(Function&& function) {
  double low = 0;
  double high = 1;
  // The interval shrinks to 1e-7; about its lowest place the function is level to the square of
  // that.
  for (int step = 0; step < 40; ++step) {
    const double first = low + (high - low) / 3;
    const double second = high - (high - low) / 3;
    if (function(first) > function(second)) {
      low = first;
    } else {
      high = second;
    }
  }
  return std::min({function(0), function(1), function((low + high) / 2)});
}

// The point between `inside` and `outside` at which the sign changes.
template <typename Function>
Point Crossing(Function&& isInside, Point inside, Point outside) {
  for (int step = 0; step < 60; ++step) {
    Point middle{};
    for (std::size_t k = 0; k < 3; ++k) middle[k] = (inside[k] + outside[k]) / 2;
    (isInside(middle) ? inside : outside) = middle;
  }
  return inside;
}

}  // namespace

MovedTools::MovedTools(double cornerRadius, double flatRadius)
    : m_corner(cornerRadius), m_flat(flatRadius) {}

void MovedTools::AddCut(const std::vector<Point>& tips) {
  if (tips.size() == 1) m_moves.push_back({tips[0], tips[0]});
  for (std::size_t i = 1; i < tips.size(); ++i) m_moves.push_back({tips[i - 1], tips[i]});
}

double MovedTools::DistanceAt(const Move& move, double share, const Point& point) const {
  const Point seen = Minus(Minus(point, move.from), {share * (move.to[0] - move.from[0]),
                                                     share * (move.to[1] - move.from[1]),
                                                     share * (move.to[2] - move.from[2])});
  const double aside = std::sqrt(seen[0] * seen[0] + seen[1] * seen[1]) - m_flat;
  const double below = m_corner - seen[2];
  if (aside <= 0 || below <= 0) return std::max(aside, below) - m_corner;
  return std::sqrt(aside * aside + below * below) - m_corner;
}

double MovedTools::MoveDistance(const Move& move, const Point& point) const {
  return Lowest([&](double share) { return DistanceAt(move, share, point); });
}

double MovedTools::SignedDistance(const Point& point, double margin) const {
  return NearestBelow(point, margin, -std::numeric_limits<double>::infinity());
}

// The least distance, or the first that is below `enough`.
double MovedTools::NearestBelow(const Point& point, double margin, double enough) const {
  const double reach = m_corner + m_flat + margin;
  double nearest = std::numeric_limits<double>::infinity();
  for (const Move& move : m_moves) {
    bool isNear = true;
    for (std::size_t k = 0; k < 2; ++k) {
      isNear = isNear && point[k] >= std::min(move.from[k], move.to[k]) - reach &&
               point[k] <= std::max(move.from[k], move.to[k]) + reach;
    }
    if (!isNear) continue;
    // The distance changes no faster than the tool moves, so this is the least it can come to.
    const double ends = DistanceAt(move, 0, point) + DistanceAt(move, 1, point);
    const double least = (ends - Length(Minus(move.to, move.from))) / 2;
    if (least >= nearest || (std::isfinite(enough) && least >= enough)) continue;
    nearest = std::min(nearest, MoveDistance(move, point));
    if (nearest < enough) break;
  }
  return nearest;
}

std::vector<Point> MovedTools::SurfacePoints(const Point& low, const Point& high,
                                             double spacing) const {
  std::array<std::size_t, 3> count{};
  for (std::size_t k = 0; k < 3; ++k) {
    count[k] = static_cast<std::size_t>(std::floor((high[k] - low[k]) / spacing)) + 1;
  }
  const auto node = [&](std::size_t i, std::size_t j, std::size_t k) {
    return Point{low[0] + spacing * static_cast<double>(i),
                 low[1] + spacing * static_cast<double>(j),
                 low[2] + spacing * static_cast<double>(k)};
  };
  const auto isInside = [&](const Point& point) { return NearestBelow(point, 0, 0) < 0; };
  std::vector<char> inside;
  for (std::size_t i = 0; i < count[0]; ++i) {
    for (std::size_t j = 0; j < count[1]; ++j) {
      for (std::size_t k = 0; k < count[2]; ++k) {
        inside.push_back(isInside(node(i, j, k)) ? 1 : 0);
      }
    }
  }
  const auto at = [&](std::size_t i, std::size_t j, std::size_t k) {
    return inside[(i * count[1] + j) * count[2] + k] != 0;
  };
  std::vector<Point> points;
  const auto visit = [&](std::size_t i, std::size_t j, std::size_t k, std::size_t i2,
                         std::size_t j2, std::size_t k2) {
    if (i2 == count[0] || j2 == count[1] || k2 == count[2]) return;
    const bool here = at(i, j, k);
    if (here == at(i2, j2, k2)) return;
    const Point a = node(i, j, k);
    const Point b = node(i2, j2, k2);
    points.push_back(here ? Crossing(isInside, a, b) : Crossing(isInside, b, a));
  };
  for (std::size_t i = 0; i < count[0]; ++i) {
    for (std::size_t j = 0; j < count[1]; ++j) {
      for (std::size_t k = 0; k < count[2]; ++k) {
        visit(i, j, k, i + 1, j, k);
        visit(i, j, k, i, j + 1, k);
        visit(i, j, k, i, j, k + 1);
      }
    }
  }
  return points;
}

double FarthestFromSurface(const formats::Mesh& mesh, std::uint8_t colour,
                           const std::function<double(const Point&)>& signedDistance) {
  double farthest = 0;
  std::vector<char> seen(mesh.vertices.size());
  for (const formats::Facet& facet : mesh.facets) {
    if (facet.colour != colour) continue;
    farthest = std::max(farthest, std::abs(signedDistance(Centre(mesh, facet))));
    for (const std::int32_t number : facet.vertices) {
      const auto vertex = static_cast<std::size_t>(number);
      if (seen[vertex] != 0) continue;
      seen[vertex] = 1;
      farthest = std::max(farthest, std::abs(signedDistance(mesh.vertices[vertex])));
    }
  }
  return farthest;
}

double FarthestFromMesh(const std::vector<Point>& points, const formats::Mesh& mesh) {
  const MeshDistance distance(mesh);
  double farthest = 0;
  for (const Point& point : points) farthest = std::max(farthest, distance.To(point));
  return farthest;
}

}  // namespace support
