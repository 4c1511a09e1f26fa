#include "support/geometry/MeshDistance.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "support/geometry/MeshChecks.h"

namespace support {
namespace {

constexpr std::size_t kLeaf = 4;

Point NearestOnSegment(const Point& p, const Point& a, const Point& b) {
  const Point along = Minus(b, a);
  const double square = Dot(along, along);
  const double share = square > 0 ? std::clamp(Dot(Minus(p, a), along) / square, 0.0, 1.0) : 0;
  return Plus(a, along, share);
}

double DistanceToSegment(const Point& p, const Point& a, const Point& b) {
  return Length(Minus(p, NearestOnSegment(p, a, b)));
}

// Whether the foot of the perpendicular lies in the triangle.
bool IsAbove(const Point& p, const std::array<Point, 3>& corners, const Point& normal) {
  for (std::size_t i = 0; i < 3; ++i) {
    const Point& from = corners[i];
    if (Dot(Cross(Minus(corners[(i + 1) % 3], from), Minus(p, from)), normal) < 0) return false;
  }
  return Dot(normal, normal) > 0;
}

double DistanceToBox(const Point& p, const Point& low, const Point& high) {
  double square = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    const double away = std::max({low[k] - p[k], 0.0, p[k] - high[k]});
    square += away * away;
  }
  return std::sqrt(square);
}

}  // namespace

Point NearestOnTriangle(const Point& p, const Point& a, const Point& b, const Point& c) {
  const Point normal = Cross(Minus(b, a), Minus(c, a));
  if (IsAbove(p, {a, b, c}, normal)) {
    return Plus(p, normal, -Dot(Minus(p, a), normal) / Dot(normal, normal));
  }
  Point best = NearestOnSegment(p, a, b);
  for (const Point& other : {NearestOnSegment(p, b, c), NearestOnSegment(p, c, a)}) {
    if (Length(Minus(p, other)) < Length(Minus(p, best))) best = other;
  }
  return best;
}

double DistanceToTriangle(const Point& p, const Point& a, const Point& b, const Point& c) {
  const Point normal = Cross(Minus(b, a), Minus(c, a));
  if (IsAbove(p, {a, b, c}, normal)) return std::abs(Dot(Minus(p, a), normal)) / Length(normal);
  return std::min(
      {DistanceToSegment(p, a, b), DistanceToSegment(p, b, c), DistanceToSegment(p, c, a)});
}

MeshDistance::MeshDistance(const formats::Mesh& mesh) : m_mesh(mesh), m_order(mesh.facets.size()) {
  std::iota(m_order.begin(), m_order.end(), std::size_t{0});
  if (!m_order.empty()) Build(0, m_order.size());
}

std::size_t MeshDistance::Build(std::size_t first, std::size_t last) {
  Node node{{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}, first, last};
  for (std::size_t i = first; i < last; ++i) {
    for (const Point& corner : Corners(m_mesh, m_mesh.facets[m_order[i]])) {
      for (std::size_t k = 0; k < 3; ++k) {
        node.low[k] = std::min(node.low[k], corner[k]);
        node.high[k] = std::max(node.high[k], corner[k]);
      }
    }
  }
  const std::size_t place = m_nodes.size();
  m_nodes.push_back(node);
  if (last - first <= kLeaf) return place;
  const Point size = Minus(node.high, node.low);
  const auto longest =
      static_cast<std::size_t>(std::max_element(size.begin(), size.end()) - size.begin());
  const auto at = [&](std::size_t i) { return m_order.begin() + static_cast<std::ptrdiff_t>(i); };
  const std::size_t middle = (first + last) / 2;
  std::nth_element(at(first), at(middle), at(last), [&](std::size_t a, std::size_t b) {
    const double one = Centre(m_mesh, m_mesh.facets[a])[longest];
    const double other = Centre(m_mesh, m_mesh.facets[b])[longest];
    return one != other ? one < other : a < b;
  });
  const std::size_t left = Build(first, middle);
  const std::size_t right = Build(middle, last);
  m_nodes[place].left = left;
  m_nodes[place].right = right;
  return place;
}

void MeshDistance::Search(std::size_t index, const Point& point, Nearest& best) const {
  const Node& node = m_nodes[index];
  if (node.left == 0) {
    for (std::size_t i = node.first; i < node.last; ++i) {
      const auto corners = Corners(m_mesh, m_mesh.facets[m_order[i]]);
      const double distance = DistanceToTriangle(point, corners[0], corners[1], corners[2]);
      if (distance < best.distance) best = {distance, m_order[i]};
    }
    return;
  }
  const auto away = [&](std::size_t child) {
    return DistanceToBox(point, m_nodes[child].low, m_nodes[child].high);
  };
  std::size_t near = node.left;
  std::size_t far = node.right;
  if (away(far) < away(near)) std::swap(near, far);
  if (away(near) < best.distance) Search(near, point, best);
  if (away(far) < best.distance) Search(far, point, best);
}

MeshDistance::Nearest MeshDistance::NearestTo(const Point& point) const {
  Nearest best{kInfinity, 0};
  if (!m_nodes.empty()) Search(0, point, best);
  return best;
}

}  // namespace support
