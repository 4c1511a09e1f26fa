#include "kernel/sweep/WeldVertices.h"

#include <algorithm>
#include <numeric>

namespace kernel {
namespace {

using Index = std::uint32_t;

bool ComesBefore(const Vec3& a, const Vec3& b) {
  if (a.x != b.x) return a.x < b.x;
  if (a.y != b.y) return a.y < b.y;
  return a.z < b.z;
}

// For each vertex the first one at the same place, by sorting.
std::vector<Index> FirstAtSamePlace(const std::vector<Vec3>& vertices) {
  std::vector<Index> order(vertices.size()), first(vertices.size());
  std::iota(order.begin(), order.end(), Index{0});
  std::sort(order.begin(), order.end(), [&](Index a, Index b) {
    if (vertices[a] != vertices[b]) return ComesBefore(vertices[a], vertices[b]);
    return a < b;
  });
  for (std::size_t i = 0; i < order.size(); ++i) {
    const bool same = i > 0 && vertices[order[i]] == vertices[order[i - 1]];
    first[order[i]] = same ? first[order[i - 1]] : order[i];
  }
  return first;
}

}  // namespace

StockMesh WeldVertices(const StockMesh& given) {
  const std::vector<Index> first = FirstAtSamePlace(given.vertices);
  StockMesh welded;
  welded.facets.reserve(given.facets.size());
  std::vector<bool> used(given.vertices.size(), false);
  for (StockMesh::Facet facet : given.facets) {
    for (Index& v : facet.vertices) v = first[v];
    const auto& [a, b, c] = facet.vertices;
    if (a == b || b == c || c == a) continue;
    for (const Index v : facet.vertices) used[v] = true;
    welded.facets.push_back(facet);
  }
  std::vector<Index> number(given.vertices.size());
  for (std::size_t i = 0; i < given.vertices.size(); ++i) {
    if (!used[i]) continue;
    number[i] = static_cast<Index>(welded.vertices.size());
    welded.vertices.push_back(given.vertices[i]);
  }
  for (StockMesh::Facet& facet : welded.facets) {
    for (Index& v : facet.vertices) v = number[v];
  }
  return welded;
}

}  // namespace kernel
