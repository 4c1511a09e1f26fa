#include "kernel/heal/JoinOpenVertices.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>
#include <utility>

#include "kernel/heal/PointTree.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

constexpr Index kVerticesInCheck = 1024;

// The part of the mesh at its open vertices. Vertices are named by their place among those.
class Rim {
 public:
  Rim(const SurfaceMesh& mesh, std::vector<Index> vertices, const Reach& reach)
      : m_mesh(mesh),
        m_vertices(std::move(vertices)),
        m_tolerance(reach.tolerance),
        m_check(reach.check) {
    m_members.resize(m_vertices.size());
    m_keeper.resize(m_vertices.size());
    m_uses.assign(m_vertices.size(), 0);
    for (Index i = 0; i < m_vertices.size(); ++i) {
      m_members[i] = {i};
      m_keeper[i] = i;
    }
    CollectFacets();
  }

  bool JoinAll() {
    while (JoinRound()) {
    }
    return m_joined;
  }

  // The vertex that each vertex of the mesh has become.
  std::vector<Index> Renumbering() const {
    std::vector<Index> number(m_mesh.vertices.size());
    for (Index v = 0; v < number.size(); ++v) number[v] = v;
    for (Index i = 0; i < m_vertices.size(); ++i) number[m_vertices[i]] = m_vertices[m_keeper[i]];
    return number;
  }

 private:
  using Edge = std::pair<Index, Index>;

  void CollectFacets() {
    std::vector<Index> place(m_mesh.vertices.size(), SurfaceMesh::kNone);
    for (Index i = 0; i < m_vertices.size(); ++i) place[m_vertices[i]] = i;
    for (const SurfaceMesh::Facet& facet : m_mesh.facets) {
      std::array<Index, 3> corners;
      int inRim = 0;
      for (std::size_t i = 0; i < 3; ++i) {
        corners[i] = place[facet.vertices[i]];
        if (corners[i] == SurfaceMesh::kNone) continue;
        ++m_uses[corners[i]];
        ++inRim;
      }
      if (inRim >= 2 && !facet.RepeatsVertex()) m_facets.push_back(corners);
    }
  }

  // Every edge between vertices of the rim as often as it has sides.
  std::vector<Edge> SortedEdges() const {
    std::vector<Edge> edges;
    edges.reserve(2 * m_facets.size());
    for (const auto& facet : m_facets) {
      std::array<Index, 3> now;
      for (std::size_t i = 0; i < 3; ++i) {
        now[i] = facet[i] == SurfaceMesh::kNone ? facet[i] : m_keeper[facet[i]];
      }
      if (now[0] == now[1] || now[1] == now[2] || now[2] == now[0]) continue;
      for (std::size_t i = 0; i < 3; ++i) {
        const Edge edge = std::minmax(now[i], now[(i + 1) % 3]);
        if (edge.second != SurfaceMesh::kNone) edges.push_back(edge);
      }
    }
    std::sort(edges.begin(), edges.end());
    return edges;
  }

  static std::vector<Index> OpenEnds(const std::vector<Edge>& edges) {
    std::vector<Index> ends;
    for (std::size_t begin = 0, end = 0; begin < edges.size(); begin = end) {
      while (end < edges.size() && edges[end] == edges[begin]) ++end;
      if (end - begin > 1) continue;
      ends.push_back(edges[begin].first);
      ends.push_back(edges[begin].second);
    }
    std::sort(ends.begin(), ends.end());
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    return ends;
  }

  const Vec3& At(Index i) const { return m_mesh.vertices[m_vertices[i]]; }

  // Joins all pairs that are each other's nearest. False when there was none to look at.
  bool JoinRound() {
    const std::vector<Edge> edges = SortedEdges();
    const std::vector<Index> ends = OpenEnds(edges);
    std::vector<PointTree::Point> points;
    points.reserve(ends.size());
    for (const Index i : ends) points.push_back({At(i), i});
    const PointTree tree(std::move(points));

    std::vector<Index> nearest(m_vertices.size(), SurfaceMesh::kNone);
    for (const Index i : ends) {
      if (i % kVerticesInCheck == 0) m_check();
      const auto accepts = [&](Index j) {
        const Edge pair = std::minmax(i, j);
        return !std::binary_search(edges.begin(), edges.end(), pair) && m_refused.count(pair) == 0;
      };
      if (const auto found = tree.Nearest({At(i), i}, m_tolerance, accepts)) {
        nearest[i] = found->number;
      }
    }
    bool any = false;
    for (const Index i : ends) {
      const Index j = nearest[i];
      if (j == SurfaceMesh::kNone || j < i || nearest[j] != i) continue;
      any = true;
      if (!TryJoin(i, j)) m_refused.insert({i, j});
    }
    return any;
  }

  bool TryJoin(Index i, Index j) {
    const bool second = m_uses[j] > m_uses[i];
    const Index keeper = second ? j : i;
    const Index other = second ? i : j;
    for (const Index member : m_members[other]) {
      if (Length(At(member) - At(keeper)) >= m_tolerance) return false;
    }
    for (const Index member : m_members[other]) {
      m_keeper[member] = keeper;
      m_members[keeper].push_back(member);
    }
    m_members[other].clear();
    m_joined = true;
    return true;
  }

  const SurfaceMesh& m_mesh;
  const std::vector<Index> m_vertices;
  const double m_tolerance;
  const std::function<void()>& m_check;
  std::vector<std::vector<Index>> m_members;  // of the vertices that stay
  std::vector<Index> m_keeper;
  std::vector<Index> m_uses;                   // by facets, as they came
  std::vector<std::array<Index, 3>> m_facets;  // kNone: a corner that is not on the rim
  std::set<Edge> m_refused;
  bool m_joined = false;
};

}  // namespace

bool JoinOpenVertices(SurfaceMesh& mesh, const MeshEdges& edges, const Reach& reach) {
  std::vector<Index> vertices = VerticesOf(mesh, OpenSides(edges));
  std::erase_if(vertices, [&](Index vertex) { return !reach.Holds(vertex); });
  if (vertices.empty() || reach.tolerance <= 0) return false;
  Rim rim(mesh, std::move(vertices), reach);
  if (!rim.JoinAll()) return false;
  const std::vector<Index> number = rim.Renumbering();
  for (SurfaceMesh::Facet& facet : mesh.facets) {
    for (Index& vertex : facet.vertices) vertex = number[vertex];
  }
  std::erase_if(mesh.facets, [](const SurfaceMesh::Facet& f) { return f.RepeatsVertex(); });
  return true;
}

}  // namespace kernel
