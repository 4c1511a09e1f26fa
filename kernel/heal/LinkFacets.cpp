#include "kernel/heal/LinkFacets.h"

#include <algorithm>
#include <utility>

#include "kernel/heal/LinkAroundEdge.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

class Patches {
 public:
  Patches(SurfaceMesh mesh, const MeshEdges& edges) {
    m_linked.mesh = std::move(mesh);
    m_linked.twin.assign(3 * m_linked.mesh.facets.size(), SurfaceMesh::kNone);
    edges.ForEach([&](Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
      if (end - begin == 2) {
        m_linked.Link(begin[0].Number(), begin[1].Number());
        if (!AreOpposite(begin, end)) m_agreed = false;
      } else if (end - begin > 2) {
        std::vector<Index> sides;
        for (const MeshEdges::Side* side = begin; side != end; ++side) {
          sides.push_back(side->Number());
        }
        m_crowded.push_back(std::move(sides));
      } else {
        m_openFacets.push_back(begin->Facet());
      }
    });
  }

  LinkedMesh Link() {
    if (m_agreed && m_crowded.empty()) return std::move(m_linked);
    FindPatches();
    std::vector<bool> isOpen(m_linked.mesh.facets.size(), false);
    for (const Index facet : m_openFacets) isOpen[m_patch[facet]] = true;
    m_linked.TurnOver(m_turned);
    for (std::vector<Index>& sides : m_crowded) {
      for (Index& side : sides) {
        if (m_turned[side / 3]) side = side - side % 3 + 2 - side % 3;
      }
      LinkAroundEdge(m_linked, sides, m_patch, isOpen);
    }
    return std::move(m_linked);
  }

 private:
  void FindPatches() {
    const std::size_t count = m_linked.mesh.facets.size();
    m_patch.assign(count, SurfaceMesh::kNone);
    m_turned.assign(count, false);
    for (Index f = 0; f < count; ++f) {
      if (m_patch[f] == SurfaceMesh::kNone) GrowPatch(f);
    }
  }

  // Turns the facets of the patch to agree with the first one, or all of them the other way when
  // that is how most of them face.
  void GrowPatch(Index first) {
    std::vector<Index> facets = {first};
    std::size_t turned = 0;
    m_patch[first] = first;
    for (std::size_t i = 0; i < facets.size(); ++i) {
      for (Index side = 3 * facets[i]; side < 3 * facets[i] + 3; ++side) {
        const Index other = m_linked.twin[side];
        if (other == SurfaceMesh::kNone) continue;
        const bool agrees = m_linked.mesh.Origin(side) == m_linked.mesh.Target(other);
        const bool turn = m_turned[facets[i]] == agrees;
        if (m_patch[other / 3] == SurfaceMesh::kNone) {
          m_patch[other / 3] = first;
          m_turned[other / 3] = turn;
          if (turn) ++turned;
          facets.push_back(other / 3);
        } else if (m_turned[other / 3] != turn) {
          m_linked.twin[side] = m_linked.twin[other] = SurfaceMesh::kNone;
        }
      }
    }
    if (2 * turned <= facets.size()) return;
    for (const Index facet : facets) m_turned[facet] = !m_turned[facet];
  }

  LinkedMesh m_linked;
  bool m_agreed = true;
  std::vector<std::vector<Index>> m_crowded;  // the sides on each edge of more than two
  std::vector<Index> m_openFacets;
  std::vector<Index> m_patch;  // for each facet the first of its patch
  std::vector<bool> m_turned;
};

}  // namespace

LinkedMesh LinkFacets(SurfaceMesh mesh, const MeshEdges& edges) {
  return Patches(std::move(mesh), edges).Link();
}

}  // namespace kernel
