#include "kernel/heal/RemoveCrossings.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "kernel/common/RunAside.h"
#include "kernel/heal/FindCrossings.h"
#include "kernel/heal/LinkFacets.h"
#include "kernel/heal/LinkSound.h"
#include "kernel/heal/MeasureBodies.h"
#include "kernel/heal/UncrossBody.h"
#include "kernel/heal/UnionFind.h"
#include "kernel/heal/UniteBodies.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

CrossingPairs Scan(const SurfaceMesh& mesh, StageProgress& progress) {
  progress.Begin("Scanning for crossing facets");
  CrossingPairs pairs = FindCrossings(mesh, false, [&](double share) { progress.Advance(share); });
  progress.End();
  return pairs;
}

// Takes facets over with the vertices they use, in their order.
void Append(SurfaceMesh& mesh, const SurfaceMesh& from, const std::function<bool(Index)>& takes) {
  std::vector<Index> number(from.vertices.size(), SurfaceMesh::kNone);
  for (Index f = 0; f < from.facets.size(); ++f) {
    if (!takes(f)) continue;
    for (const Index vertex : from.facets[f].vertices) number[vertex] = 0;
  }
  for (Index v = 0; v < number.size(); ++v) {
    if (number[v] == SurfaceMesh::kNone) continue;
    number[v] = static_cast<Index>(mesh.vertices.size());
    mesh.vertices.push_back(from.vertices[v]);
  }
  for (Index f = 0; f < from.facets.size(); ++f) {
    if (!takes(f)) continue;
    SurfaceMesh::Facet facet = from.facets[f];
    for (Index& vertex : facet.vertices) vertex = number[vertex];
    mesh.facets.push_back(facet);
  }
}

class Bodies {
 public:
  Bodies(const LinkedMesh& linked, const CrossingPairs& pairs)
      : m_mesh(linked.mesh),
        m_bodies(linked.Bodies()),
        m_measures(MeasureBodies(linked, m_bodies)),
        m_groups(m_measures.size()),
        m_crossesItself(m_measures.size(), false),
        m_crosses(m_measures.size(), false) {
    for (const auto& [f, g] : pairs) {
      const Index a = m_bodies[f], b = m_bodies[g];
      m_crosses[a] = m_crosses[b] = true;
      if (a == b) m_crossesItself[a] = true;
      m_groups.Join(a, b);
    }
    for (const auto& [f, g] : pairs) ++m_pairs[m_groups.Root(m_bodies[f])];
  }

  // The mesh with every group of crossing bodies mended that can be.
  SurfaceMesh Mended(double tolerance, double least, const Tell& tell) {
    std::map<Index, std::vector<Index>> groups;
    for (Index body = 0; body < m_measures.size(); ++body) {
      if (m_crosses[body]) groups[m_groups.Root(body)].push_back(body);
    }
    std::vector<SurfaceMesh> results;
    std::vector<bool> isMended(m_measures.size(), false);
    for (const auto& [root, bodies] : groups) {
      const auto check = [&] {
        tell(static_cast<double>(results.size()) / static_cast<double>(groups.size()));
      };
      std::optional<SurfaceMesh> result = MendGroup(bodies, tolerance, least, check);
      if (!result) continue;
      for (const Index body : bodies) isMended[body] = true;
      results.push_back(std::move(*result));
    }
    SurfaceMesh mesh;
    Append(mesh, m_mesh, [&](Index f) { return !isMended[m_bodies[f]]; });
    for (const SurfaceMesh& result : results) Append(mesh, result, [](Index) { return true; });
    return mesh;
  }

 private:
  std::optional<SurfaceMesh> MendGroup(const std::vector<Index>& bodies, double tolerance,
                                       double least, const std::function<void()>& check) {
    std::optional<SurfaceMesh> result;
    for (const Index body : bodies) {
      if (m_measures[body].isOpen || m_measures[body].volume <= 0) return std::nullopt;
      SurfaceMesh next;
      Append(next, m_mesh, [&](Index f) { return m_bodies[f] == body; });
      check();
      if (m_crossesItself[body]) {
        std::optional<SurfaceMesh> uncrossed = UncrossBody(next, tolerance, check);
        if (!uncrossed) return std::nullopt;
        next = std::move(*uncrossed);
      }
      check();
      result = result ? UniteBodies(*result, next, check) : std::move(next);
      if (!result) return std::nullopt;
    }
    // Places are rounded on the way, so that the outcome is looked at once more.
    const bool good =
        LinkSound(*result, least) && FindCrossings(*result, true, [&](double) { check(); }).empty();
    return good ? std::move(result) : std::nullopt;
  }

  const SurfaceMesh& m_mesh;
  const std::vector<Index> m_bodies;
  const std::vector<BodyMeasure> m_measures;
  UnionFind m_groups;
  std::vector<bool> m_crossesItself, m_crosses;
  std::map<Index, std::size_t> m_pairs;  // by group
};

}  // namespace

std::size_t RemoveCrossings(LinkedMesh& linked, double tolerance, double least,
                            StageProgress& progress) {
  const CrossingPairs pairs = Scan(linked.mesh, progress);
  if (pairs.empty()) return 0;
  progress.Begin("Cleaning crossing facets");
  RunAside(progress, [&](const Tell& tell) {
    SurfaceMesh mesh = Bodies(linked, pairs).Mended(tolerance, least, tell);
    const MeshEdges edges(mesh);
    linked = LinkFacets(std::move(mesh), edges);
  });
  progress.End();
  return Scan(linked.mesh, progress).size();
}

}  // namespace kernel
