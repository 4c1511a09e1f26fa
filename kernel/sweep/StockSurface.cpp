#include "kernel/sweep/StockSurface.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "kernel/sweep/NearestOnTriangle.h"

namespace kernel {
namespace {

std::array<Vec3, 3> CornersOf(const StockMesh& mesh, std::size_t facet) {
  const auto& v = mesh.facets[facet].vertices;
  return {mesh.vertices[v[0]], mesh.vertices[v[1]], mesh.vertices[v[2]]};
}

double AngleAt(const std::array<Vec3, 3>& corners, std::size_t i) {
  const Vec3 next = corners[(i + 1) % 3] - corners[i];
  const Vec3 previous = corners[(i + 2) % 3] - corners[i];
  return std::atan2(Length(Cross(next, previous)), Dot(next, previous));
}

// For each facet's edge the sum of the normals of all facets at it.
std::vector<Vec3> EdgeNormals(const StockMesh& mesh, const std::vector<Vec3>& facetNormals) {
  std::vector<std::uint32_t> order(3 * mesh.facets.size());
  std::iota(order.begin(), order.end(), 0U);
  const auto ends = [&](std::uint32_t edge) {
    const auto& v = mesh.facets[edge / 3].vertices;
    return std::minmax({v[edge % 3], v[(edge + 1) % 3]});
  };
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    const auto endsOfA = ends(a);
    const auto endsOfB = ends(b);
    return endsOfA != endsOfB ? endsOfA < endsOfB : a < b;
  });
  std::vector<Vec3> normals(order.size());
  for (std::size_t begin = 0; begin < order.size();) {
    std::size_t end = begin;
    Vec3 sum;
    while (end < order.size() && ends(order[end]) == ends(order[begin])) {
      sum += facetNormals[order[end++] / 3];
    }
    for (; begin < end; ++begin) normals[order[begin]] = sum;
  }
  return normals;
}

}  // namespace

StockSurface::StockSurface(const StockMesh& mesh, bool overlapping)
    : m_mesh(mesh), m_overlapping(overlapping), m_vertexNormals(mesh.vertices.size()) {
  m_facetNormals.reserve(mesh.facets.size());
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    const std::array<Vec3, 3> corners = CornersOf(mesh, f);
    const Vec3 normal = Normalised(Cross(corners[1] - corners[0], corners[2] - corners[0]));
    m_facetNormals.push_back(normal);
    for (std::size_t i = 0; i < 3; ++i) {
      m_vertexNormals[mesh.facets[f].vertices[i]] += normal * AngleAt(corners, i);
    }
  }
  m_edgeNormals = EdgeNormals(mesh, m_facetNormals);
}

std::optional<NearestOnStock> StockSurface::Nearest(const Vec3& point,
                                                    std::span<const std::uint32_t> facets) const {
  double least = std::numeric_limits<double>::infinity();
  double steepest = 0;
  NearestOnStock nearest;
  TrianglePart part;
  for (const std::uint32_t facet : facets) {
    const PointOnTriangle found = NearestOnTriangle(CornersOf(m_mesh, facet), point);
    const double square = LengthSquared(point - found.point);
    // Of the facets at an edge or a corner the one whose plane lies furthest away says most.
    const double above = std::abs(Dot(m_facetNormals[facet], point - found.point));
    if (square > least * (1 + 1e-12) || (square >= least && above <= steepest)) continue;
    least = square;
    steepest = above;
    nearest.point = found.point;
    nearest.facet = facet;
    part = found.part;
  }
  if (!std::isfinite(least)) return std::nullopt;
  const auto index = static_cast<std::size_t>(part.index);
  Vec3 outward = m_facetNormals[nearest.facet];
  if (part.kind == TrianglePart::Kind::kEdge) outward = m_edgeNormals[3 * nearest.facet + index];
  if (part.kind == TrianglePart::Kind::kCorner) {
    outward = m_vertexNormals[m_mesh.facets[nearest.facet].vertices[index]];
  }
  const bool outside = !m_overlapping && Dot(outward, point - nearest.point) > 0;
  nearest.distance = outside ? std::sqrt(least) : -std::sqrt(least);
  return nearest;
}

}  // namespace kernel
