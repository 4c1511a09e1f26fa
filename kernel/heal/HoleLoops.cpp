#include "kernel/heal/HoleLoops.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <tuple>
#include <utility>

namespace kernel {
namespace {

using Index = LinkedMesh::Index;
using Loop = std::vector<Index>;

// Follows holes from open side to open side. Where several fans of facets share a vertex, each gap
// between two of them belongs to one hole.
class RimWalk {
 public:
  explicit RimWalk(const LinkedMesh& linked) : m_linked(linked) {
    for (Index side = 0; side < linked.twin.size(); ++side) {
      if (linked.IsOpen(side)) m_beginning[linked.mesh.Origin(side)].push_back(side);
    }
    for (const auto& [vertex, sides] : m_beginning) {
      if (sides.size() == 1) {
        m_before[sides[0]] = EndOfFan(sides[0]);
      } else {
        MatchAround(vertex, sides);
      }
    }
  }

  // The open side that ends where `side` begins, on the other side of the same gap.
  Index Before(Index side) const { return m_before.at(side); }

  std::vector<Index> OpenSides() const {
    std::vector<Index> sides;
    for (const auto& [side, before] : m_before) sides.push_back(side);
    return sides;
  }

 private:
  // The open side at the other end of the fan that begins with `side`.
  Index EndOfFan(Index side) const {
    Index end = SurfaceMesh::Previous(side);
    while (!m_linked.IsOpen(end)) end = SurfaceMesh::Previous(m_linked.twin[end]);
    return end;
  }

  // The sum of the normals of the facets around the vertex.
  Vec3 NormalOf(const std::vector<Index>& sides) const {
    Vec3 normal;
    for (Index side : sides) {
      normal += m_linked.mesh.Normal(m_linked.mesh.facets[side / 3]);
      side = SurfaceMesh::Previous(side);
      while (!m_linked.IsOpen(side)) {
        side = m_linked.twin[side];
        normal += m_linked.mesh.Normal(m_linked.mesh.facets[side / 3]);
        side = SurfaceMesh::Previous(side);
      }
    }
    return Normalised(normal);
  }

  // Looking against the normal, a facet lies left of its side and the gap right of it: the first
  // fan's end clockwise of it is across the gap.
  void MatchAround(Index vertex, const std::vector<Index>& sides) {
    const SurfaceMesh& mesh = m_linked.mesh;
    const Vec3& centre = mesh.vertices[vertex];
    const Vec3 normal = NormalOf(sides);
    const Vec3 u = Normalised(Cross(mesh.vertices[mesh.Target(sides[0])] - centre, normal));
    const Vec3 v = Cross(normal, u);
    const auto angle = [&](Index other) {
      const Vec3 way = mesh.vertices[other] - centre;
      return std::atan2(Dot(way, v), Dot(way, u));
    };
    std::vector<std::tuple<double, Index, Index>> gaps;  // width, side, end of another fan
    for (const Index side : sides) {
      for (const Index fan : sides) {
        const Index end = EndOfFan(fan);
        double width = angle(mesh.Target(side)) - angle(mesh.Origin(end));
        // A gap of no width is the narrowest, but a fan does not close on itself.
        if (width < 0 || (width == 0 && fan == side)) width += 2 * std::numbers::pi;
        gaps.emplace_back(width, side, end);
      }
    }
    std::sort(gaps.begin(), gaps.end());
    std::set<Index> taken;
    for (const auto& [width, side, end] : gaps) {
      if (m_before.count(side) == 0 && taken.insert(end).second) m_before[side] = end;
    }
  }

  const LinkedMesh& m_linked;
  std::map<Index, std::vector<Index>> m_beginning;  // open sides by the vertex they begin at
  std::map<Index, Index> m_before;
};

// Cuts a loop where it comes to a vertex again.
void AddSimpleLoops(LinkedMesh& linked, const Loop& loop, std::vector<Loop>& loops) {
  Loop path;
  std::map<Index, std::size_t> place;  // of the path's sides, by target
  for (const Index side : loop) {
    place[linked.mesh.Target(side)] = path.size();
    path.push_back(side);
    const auto found = place.find(linked.mesh.Origin(side));
    if (found == place.end()) continue;
    const auto begin = path.begin() + static_cast<std::ptrdiff_t>(found->second);
    Loop simple(begin, path.end());
    for (const Index cut : simple) place.erase(linked.mesh.Target(cut));
    path.erase(begin, path.end());
    if (simple.size() == 2) {
      linked.Link(simple[0], simple[1]);
    } else {
      loops.push_back(std::move(simple));
    }
  }
}

}  // namespace

std::vector<Loop> HoleLoops(LinkedMesh& linked) {
  const RimWalk rim(linked);
  std::set<Index> done;
  std::vector<Loop> whole, loops;
  for (const Index first : rim.OpenSides()) {
    Loop loop;
    for (Index side = first; done.insert(side).second; side = rim.Before(side)) {
      loop.push_back(side);
    }
    if (!loop.empty()) whole.push_back(std::move(loop));
  }
  for (const Loop& loop : whole) AddSimpleLoops(linked, loop, loops);
  return loops;
}

}  // namespace kernel
