#include "kernel/heal/LinkAroundEdge.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

class EdgeFan {
 public:
  EdgeFan(LinkedMesh& linked, const std::vector<Index>& sides, const std::vector<Index>& patch,
          const std::vector<bool>& isOpen)
      : m_linked(linked), m_sides(sides), m_patch(patch), m_isOpen(isOpen) {
    const SurfaceMesh& mesh = linked.mesh;
    m_low = std::min(mesh.Origin(sides[0]), mesh.Target(sides[0]));
    const Index high = std::max(mesh.Origin(sides[0]), mesh.Target(sides[0]));
    m_along = Normalised(mesh.vertices[high] - mesh.vertices[m_low]);
  }

  void Link() {
    LinkWithinPatches();
    const std::vector<Index> rest = Rest();
    const auto up = std::count_if(rest.begin(), rest.end(), [&](Index s) { return RunsUp(s); });
    if (2 * static_cast<std::size_t>(up) == rest.size()) {
      LinkWedges(rest);
    } else {
      LinkFlattest(rest);
    }
  }

 private:
  bool RunsUp(Index side) const { return m_linked.mesh.Origin(side) == m_low; }
  Index PatchOf(Index side) const { return m_patch[side / 3]; }

  std::vector<Index> Rest() const {
    std::vector<Index> rest;
    for (const Index side : m_sides) {
      if (m_linked.IsOpen(side)) rest.push_back(side);
    }
    return rest;
  }

  void LinkWithinPatches() {
    for (const Index a : m_sides) {
      Index partner = SurfaceMesh::kNone;
      std::size_t inPatch = 0;
      for (const Index b : m_sides) {
        if (PatchOf(b) != PatchOf(a)) continue;
        ++inPatch;
        if (RunsUp(b) != RunsUp(a)) partner = b;
      }
      if (inPatch == 2 && partner != SurfaceMesh::kNone) m_linked.Link(a, partner);
    }
  }

  // From the edge's line to the facet's third vertex, of length 1.
  Vec3 Across(Index side) const {
    const SurfaceMesh& mesh = m_linked.mesh;
    const Vec3 to = mesh.vertices[mesh.Origin(SurfaceMesh::Previous(side))] - mesh.vertices[m_low];
    return Normalised(to - m_along * Dot(to, m_along));
  }

  // Looking along the edge, the solid lies clockwise of a facet whose side runs up.
  void LinkWedges(const std::vector<Index>& rest) {
    if (rest.empty()) return;
    const Vec3 u = Across(rest[0]);
    const Vec3 v = Cross(m_along, u);
    // Of two facets in one place the one that runs up comes first: there is no solid between them.
    std::vector<std::tuple<double, bool, Index>> around;
    for (const Index side : rest) {
      const Vec3 across = Across(side);
      around.emplace_back(std::atan2(Dot(across, v), Dot(across, u)), !RunsUp(side), side);
    }
    std::sort(around.begin(), around.end());
    const std::size_t count = around.size();
    for (std::size_t start = 0; start < count; ++start) {
      const Index side = std::get<2>(around[start]);
      if (!RunsUp(side)) continue;
      int depth = 0;
      for (std::size_t step = 1; step < count; ++step) {
        const Index other = std::get<2>(around[(start + count - step) % count]);
        if (RunsUp(other)) {
          ++depth;
        } else if (depth-- == 0) {
          m_linked.Link(side, other);
          break;
        }
      }
    }
  }

  void LinkFlattest(const std::vector<Index>& rest) {
    std::vector<std::tuple<int, double, Index, Index>> pairs;
    for (const Index a : rest) {
      for (const Index b : rest) {
        if (!RunsUp(a) || RunsUp(b)) continue;
        const int open = (m_isOpen[PatchOf(a)] ? 1 : 0) + (m_isOpen[PatchOf(b)] ? 1 : 0);
        pairs.emplace_back(open, Dot(Across(a), Across(b)), a, b);
      }
    }
    std::sort(pairs.begin(), pairs.end());
    for (const auto& [open, bend, a, b] : pairs) {
      if (m_linked.IsOpen(a) && m_linked.IsOpen(b)) m_linked.Link(a, b);
    }
  }

  LinkedMesh& m_linked;
  const std::vector<Index>& m_sides;
  const std::vector<Index>& m_patch;
  const std::vector<bool>& m_isOpen;
  Index m_low;
  Vec3 m_along;
};

}  // namespace

void LinkAroundEdge(LinkedMesh& linked, const std::vector<Index>& sides,
                    const std::vector<Index>& patch, const std::vector<bool>& isOpen) {
  EdgeFan(linked, sides, patch, isOpen).Link();
}

}  // namespace kernel
