#include <array>
#include <cstdint>
#include <utility>

#include "kernel/spin/SpunEdges.h"

namespace kernel {
namespace {

// Vertices on the plane count as above it, so that each facet is cut at two sides or not at all.
bool IsAbove(const Vec3& vertex) { return vertex.z >= 0; }

// The same to the last bit whichever facet asks.
Point2 Cut(const StockMesh& mesh, std::uint32_t a, std::uint32_t b) {
  if (a > b) std::swap(a, b);
  const Vec3 &low = mesh.vertices[a], &high = mesh.vertices[b];
  if (low.z == 0) return {low.x, low.y};
  if (high.z == 0) return {high.x, high.y};
  const double t = low.z / (low.z - high.z);
  return {low.x + t * (high.x - low.x), low.y + t * (high.y - low.y)};
}

void AddAboveAxis(const Point2& from, const Point2& to, std::vector<SpunEdge>& edges) {
  const Winding once{0, 1};
  const Point2 start{from.x, from.y > 0 ? from.y : 0}, end{to.x, to.y > 0 ? to.y : 0};
  if ((from.y < 0) == (to.y < 0)) {
    edges.push_back({start, end, once});
    return;
  }
  const double t = from.y / (from.y - to.y);
  const Point2 onAxis{from.x + t * (to.x - from.x), 0};
  edges.push_back({start, onAxis, once});
  edges.push_back({onAxis, end, once});
}

}  // namespace

std::vector<SpunEdge> SectionEdges(const StockMesh& mesh) {
  std::vector<SpunEdge> edges;
  for (const StockMesh::Facet& facet : mesh.facets) {
    std::array<Point2, 2> ends;  // where the border goes up through the plane, and down
    bool cut = false;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint32_t a = facet.vertices[i], b = facet.vertices[(i + 1) % 3];
      const bool up = IsAbove(mesh.vertices[b]);
      if (IsAbove(mesh.vertices[a]) == up) continue;
      ends[up ? 0 : 1] = Cut(mesh, a, b);
      cut = true;
    }
    if (cut) AddAboveAxis(ends[0], ends[1], edges);
  }
  return edges;
}

}  // namespace kernel
