#include "host/measure/FacetTree.h"

#include <algorithm>
#include <array>
#include <numbers>

#include "host/measure/MeshTriangle.h"
#include "host/measure/NearestOnFacet.h"

namespace host {

namespace {

constexpr std::int32_t kLeafSize = 4;
// Halving keeps the tree shallow: more levels than bits in a facet count cannot be.
constexpr std::size_t kDeepest = 64;
// A box further away than this many of its radii is taken for a dipole.
constexpr double kFarAway = 2.5;
constexpr double kNever = std::numeric_limits<double>::infinity();
// Where the winding number of a closed surface cannot be: the approximation is too coarse there.
constexpr double kClearlyOutside = 0.25;
constexpr double kClearlyInside = 0.75;

bool IsFinite(const Triangle& triangle) {
  return std::all_of(triangle.begin(), triangle.end(), [](const Point& corner) {
    return std::all_of(corner.begin(), corner.end(), [](double x) { return std::isfinite(x); });
  });
}

double SquaredDistance(const Point& low, const Point& high, const Point& p) {
  double square = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double outside = std::max({low[axis] - p[axis], p[axis] - high[axis], 0.0});
    square += outside * outside;
  }
  return square;
}

// As seen from `p`, positive for a facet that faces away from it. After van Oosterom and Strackee.
double SolidAngle(const Triangle& triangle, const Point& p) {
  const Point a = triangle[0] - p;
  const Point b = triangle[1] - p;
  const Point c = triangle[2] - p;
  const double la = Length(a);
  const double lb = Length(b);
  const double lc = Length(c);
  const double denominator = la * lb * lc + Dot(a, b) * lc + Dot(b, c) * la + Dot(c, a) * lb;
  return 2 * std::atan2(Dot(a, Cross(b, c)), denominator);
}

}  // namespace

FacetTree::FacetTree(const formats::Mesh& mesh) {
  m_facets.reserve(mesh.facets.size());
  for (const formats::Facet& facet : mesh.facets) {
    const Triangle triangle = TriangleOf(mesh, facet);
    if (IsFinite(triangle)) m_facets.push_back(triangle);
  }
  if (m_facets.empty()) return;
  m_nodes.reserve(m_facets.size());
  Build(0, static_cast<std::int32_t>(m_facets.size()));
}

void FacetTree::Measure(Node& node, std::int32_t first, std::int32_t count) const {
  node.low.fill(kNever);
  node.high.fill(-kNever);
  double area = 0;
  for (std::int32_t i = first; i < first + count; ++i) {
    const Triangle& facet = FacetAt(i);
    for (const Point& corner : facet) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        node.low[axis] = std::min(node.low[axis], corner[axis]);
        node.high[axis] = std::max(node.high[axis], corner[axis]);
      }
    }
    const double part = Area(facet);
    area += part;
    node.centre = node.centre + part * Centroid(facet);
    node.areaNormal = node.areaNormal + 0.5 * DoubleAreaNormal(facet);
  }
  node.centre = area > 0 ? (1 / area) * node.centre : 0.5 * (node.low + node.high);
  for (std::int32_t i = first; i < first + count; ++i) {
    for (const Point& corner : FacetAt(i)) {
      node.radius = std::max(node.radius, Length(corner - node.centre));
    }
  }
}

std::int32_t FacetTree::Build(std::int32_t first, std::int32_t count) {
  const auto place = static_cast<std::int32_t>(m_nodes.size());
  m_nodes.emplace_back();
  Node node;
  Measure(node, first, count);
  node.first = first;
  if (count <= kLeafSize) {
    node.count = count;
  } else {
    const Point extent = node.high - node.low;
    const auto axis =
        static_cast<std::size_t>(std::max_element(extent.begin(), extent.end()) - extent.begin());
    const std::int32_t half = count / 2;
    std::nth_element(
        m_facets.begin() + first, m_facets.begin() + first + half, m_facets.begin() + first + count,
        [axis](const Triangle& a, const Triangle& b) {
          return a[0][axis] + a[1][axis] + a[2][axis] < b[0][axis] + b[1][axis] + b[2][axis];
        });
    Build(first, half);
    node.second = Build(first + half, count - half);
  }
  m_nodes[static_cast<std::size_t>(place)] = node;
  return place;
}

FacetTree::Nearest FacetTree::NearestTo(const Point& p) const {
  Nearest nearest;
  if (m_nodes.empty()) return nearest;
  struct Waiting {
    std::int32_t node;
    double square;
  };
  std::array<Waiting, kDeepest> waiting;
  std::size_t depth = 0;
  double least = kNever;
  waiting[depth++] = {0, 0};
  while (depth > 0) {
    const Waiting next = waiting[--depth];
    if (next.square >= least) continue;
    const Node& node = m_nodes[static_cast<std::size_t>(next.node)];
    for (std::int32_t i = node.first; i < node.first + node.count; ++i) {
      const Point place = NearestOnFacet(FacetAt(i), p);
      const Point offset = p - place;
      const double square = Dot(offset, offset);
      if (square >= least) continue;
      least = square;
      nearest = {0, place, i};
    }
    if (node.count > 0) continue;
    const auto at = [&](std::int32_t child) {
      const Node& box = m_nodes[static_cast<std::size_t>(child)];
      return Waiting{child, SquaredDistance(box.low, box.high, p)};
    };
    Waiting first = at(next.node + 1);
    Waiting second = at(node.second);
    // The nearer one comes next.
    if (first.square < second.square) std::swap(first, second);
    waiting[depth++] = first;
    waiting[depth++] = second;
  }
  nearest.distance = std::sqrt(least);
  return nearest;
}

double FacetTree::WindingNumber(const Point& p, double farAway) const {
  double angle = 0;
  std::array<std::int32_t, kDeepest> waiting;
  std::size_t depth = 0;
  waiting[depth++] = 0;
  while (depth > 0) {
    const std::int32_t place = waiting[--depth];
    const Node& node = m_nodes[static_cast<std::size_t>(place)];
    const Point offset = node.centre - p;
    const double distance = Length(offset);
    if (distance > farAway * node.radius) {
      angle += Dot(node.areaNormal, offset) / (distance * distance * distance);
      continue;
    }
    for (std::int32_t i = node.first; i < node.first + node.count; ++i) {
      angle += SolidAngle(FacetAt(i), p);
    }
    if (node.count > 0) continue;
    waiting[depth++] = node.second;
    waiting[depth++] = place + 1;
  }
  return angle / (4 * std::numbers::pi);
}

bool FacetTree::IsInside(const Point& p) const {
  if (m_nodes.empty()) return false;
  const double number = std::abs(WindingNumber(p, kFarAway));
  if (number < kClearlyOutside) return false;
  if (number > kClearlyInside) return true;
  return std::abs(WindingNumber(p, kNever)) > 0.5;
}

double FacetTree::SignedDistance(const Point& p, const Nearest& nearest) const {
  constexpr double kOnTheSurface = 1e-9;  // of the diagonal
  if (nearest.distance <= kOnTheSurface * Diagonal()) return 0;
  return IsInside(p) ? nearest.distance : -nearest.distance;
}

double FacetTree::DistanceToFacet(std::int32_t facet, const Point& p) const {
  return Length(p - NearestOnFacet(FacetAt(facet), p));
}

double FacetTree::Diagonal() const {
  return m_nodes.empty() ? 0 : Length(m_nodes.front().high - m_nodes.front().low);
}

}  // namespace host
