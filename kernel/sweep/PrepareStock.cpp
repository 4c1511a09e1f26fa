#include "kernel/sweep/PrepareStock.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "kernel/common/FatalError.h"
#include "kernel/sweep/WeldVertices.h"

namespace kernel {
namespace {

using Index = std::uint32_t;

struct HalfEdge {
  Index low, high;  // vertices, low < high
  bool forward;     // from low to high
  Index facet;
};

std::vector<HalfEdge> SortedHalfEdges(const StockMesh& mesh) {
  std::vector<HalfEdge> edges;
  edges.reserve(3 * mesh.facets.size());
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    const auto& v = mesh.facets[f].vertices;
    for (std::size_t i = 0; i < 3; ++i) {
      const auto [low, high] = std::minmax(v[i], v[(i + 1) % 3]);
      edges.push_back({low, high, v[i] == low, static_cast<Index>(f)});
    }
  }
  std::sort(edges.begin(), edges.end(), [](const HalfEdge& a, const HalfEdge& b) {
    if (a.low != b.low) return a.low < b.low;
    if (a.high != b.high) return a.high < b.high;
    if (a.forward != b.forward) return a.forward;
    return a.facet < b.facet;
  });
  return edges;
}

// Calls group(begin, end) for the half edges of each edge.
template <class Group>
void ForEachEdge(const std::vector<HalfEdge>& edges, const Group& group) {
  for (std::size_t begin = 0; begin < edges.size();) {
    std::size_t end = begin + 1;
    while (end < edges.size() && edges[end].low == edges[begin].low &&
           edges[end].high == edges[begin].high) {
      ++end;
    }
    group(begin, end);
    begin = end;
  }
}

class Joined {
 public:
  explicit Joined(std::size_t count) : m_parent(count) {
    std::iota(m_parent.begin(), m_parent.end(), Index{0});
  }
  Index Root(Index i) {
    while (m_parent[i] != i) i = m_parent[i] = m_parent[m_parent[i]];
    return i;
  }
  // The smaller number leads, so that the outcome does not depend on the order of joining.
  void Join(Index a, Index b) {
    a = Root(a);
    b = Root(b);
    m_parent[std::max(a, b)] = std::min(a, b);
  }

 private:
  std::vector<Index> m_parent;
};

std::size_t CornerOf(const StockMesh::Facet& facet, Index vertex) {
  return facet.vertices[0] == vertex ? 0 : facet.vertices[1] == vertex ? 1 : 2;
}

// The direction from the edge's line to the facet's third vertex, across the edge.
Vec3 AcrossEdge(const StockMesh& mesh, const HalfEdge& edge, const Vec3& along) {
  const auto& v = mesh.facets[edge.facet].vertices;
  for (const Index third : v) {
    if (third == edge.low || third == edge.high) continue;
    const Vec3 to = mesh.vertices[third] - mesh.vertices[edge.low];
    return Normalised(to - along * Dot(to, along));
  }
  return {};
}

// Pairs the half edges [begin, end) of one edge: each forward facet with the backward facet that
// bounds the same wedge of solid, the next one around the edge on the solid's side.
template <class Pair>
void PairFacets(const StockMesh& mesh, const std::vector<HalfEdge>& edges, std::size_t begin,
                std::size_t end, const Pair& pair) {
  if (end - begin == 2) {
    pair(edges[begin], edges[begin + 1]);
    return;
  }
  const Vec3 along = Normalised(mesh.vertices[edges[begin].high] - mesh.vertices[edges[begin].low]);
  const Vec3 u = AcrossEdge(mesh, edges[begin], along);
  const Vec3 v = Cross(along, u);
  std::vector<std::pair<double, std::size_t>> around;
  for (std::size_t i = begin; i < end; ++i) {
    const Vec3 across = AcrossEdge(mesh, edges[i], along);
    around.emplace_back(std::atan2(Dot(across, v), Dot(across, u)), i);
  }
  std::sort(around.begin(), around.end());
  std::vector<bool> taken(around.size(), false);
  // Seen against the edge's direction a forward facet has the solid on its clockwise side, as its
  // normal, along x across, points the other way.
  for (std::size_t start = 0; start < around.size(); ++start) {
    const HalfEdge& forward = edges[around[start].second];
    if (!forward.forward) continue;
    int depth = 0;
    for (std::size_t step = 1; step < around.size() + 1; ++step) {
      const std::size_t other = (start + around.size() - step % around.size()) % around.size();
      const HalfEdge& candidate = edges[around[other].second];
      if (taken[other]) continue;
      if (candidate.forward) {
        ++depth;
      } else if (depth-- == 0) {
        taken[other] = true;
        pair(forward, candidate);
        break;
      }
    }
  }
}

}  // namespace

void CheckFinite(const StockMesh& mesh, const std::string& name) {
  for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
    if (IsFinite(mesh.vertices[i])) continue;
    throw FatalError(name + " vertex " + std::to_string(i + 1) + ": a coordinate is not finite");
  }
}

std::size_t CountOpenEdges(const StockMesh& mesh) {
  const std::vector<HalfEdge> edges = SortedHalfEdges(mesh);
  std::size_t open = 0;
  ForEachEdge(edges, [&](std::size_t begin, std::size_t end) {
    const auto forward = std::count_if(edges.begin() + static_cast<std::ptrdiff_t>(begin),
                                       edges.begin() + static_cast<std::ptrdiff_t>(end),
                                       [](const HalfEdge& edge) { return edge.forward; });
    if (2 * static_cast<std::size_t>(forward) != end - begin) ++open;
  });
  return open;
}

void TurnOver(StockMesh& mesh) {
  for (StockMesh::Facet& facet : mesh.facets) std::swap(facet.vertices[1], facet.vertices[2]);
}

double SixfoldVolume(const StockMesh& mesh) {
  if (mesh.vertices.empty()) return 0;
  const Vec3 from = mesh.vertices[0];
  double sum = 0;
  for (const StockMesh::Facet& facet : mesh.facets) {
    const Vec3 a = mesh.vertices[facet.vertices[0]] - from;
    const Vec3 b = mesh.vertices[facet.vertices[1]] - from;
    const Vec3 c = mesh.vertices[facet.vertices[2]] - from;
    sum += Dot(a, Cross(b, c));
  }
  return sum;
}

PreparedStock PrepareStock(const StockMesh& given) {
  CheckFinite(given, "stock");
  PreparedStock stock{WeldVertices(given), {}, false};
  if (stock.mesh.facets.empty()) throw FatalError("the stock has no facets");
  if (const std::size_t open = CountOpenEdges(stock.mesh); open > 0) {
    throw FatalError(
        "the stock is open: " + std::to_string(open) +
        " edges are not shared by facets that run through them in opposite directions");
  }
  for (const Vec3& vertex : stock.mesh.vertices) stock.box.Include(vertex);
  if (!std::isfinite(stock.box.Diagonal())) throw FatalError("the stock is too large to measure");
  const double volume = SixfoldVolume(stock.mesh);
  if (volume == 0) throw FatalError("the stock encloses no volume");
  if (volume < 0) {
    stock.turned = true;
    TurnOver(stock.mesh);
  }
  return stock;
}

StockMesh WithOwnVertices(const StockMesh& mesh) {
  // Corner 3 f + i is corner i of facet f; corners at the ends of a paired edge share a vertex.
  Joined corners(3 * mesh.facets.size());
  const std::vector<HalfEdge> edges = SortedHalfEdges(mesh);
  ForEachEdge(edges, [&](std::size_t begin, std::size_t end) {
    PairFacets(mesh, edges, begin, end, [&](const HalfEdge& a, const HalfEdge& b) {
      for (const Index vertex : {a.low, a.high}) {
        corners.Join(static_cast<Index>(3 * a.facet + CornerOf(mesh.facets[a.facet], vertex)),
                     static_cast<Index>(3 * b.facet + CornerOf(mesh.facets[b.facet], vertex)));
      }
    });
  });
  std::vector<std::pair<Index, Index>> fans;  // vertex, root of a fan of facets around it
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    for (std::size_t i = 0; i < 3; ++i) {
      const auto corner = static_cast<Index>(3 * f + i);
      if (corners.Root(corner) == corner) fans.emplace_back(mesh.facets[f].vertices[i], corner);
    }
  }
  if (fans.size() == mesh.vertices.size()) return mesh;
  std::sort(fans.begin(), fans.end());
  StockMesh parted;
  parted.facets = mesh.facets;
  std::vector<Index> number(3 * mesh.facets.size());
  for (const auto& [vertex, root] : fans) {
    number[root] = static_cast<Index>(parted.vertices.size());
    parted.vertices.push_back(mesh.vertices[vertex]);
  }
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    for (std::size_t i = 0; i < 3; ++i) {
      parted.facets[f].vertices[i] = number[corners.Root(static_cast<Index>(3 * f + i))];
    }
  }
  return parted;
}

}  // namespace kernel
