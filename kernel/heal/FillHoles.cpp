#include "kernel/heal/FillHoles.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "kernel/heal/HoleLoops.h"
#include "kernel/heal/MeasureBodies.h"
#include "kernel/heal/TriangulateLoop.h"

namespace kernel {
namespace {

using Index = LinkedMesh::Index;
using Edge = std::pair<Index, Index>;

// Beyond this the dynamic programme takes too long.
constexpr std::size_t kLongLoop = 400;

class Filler {
 public:
  Filler(LinkedMesh& linked, const std::vector<std::vector<Index>>& loops, double least)
      : m_linked(linked), m_least(least) {
    std::vector<bool> isAtHole(linked.mesh.vertices.size(), false);
    for (const std::vector<Index>& loop : loops) {
      for (const Index side : loop) isAtHole[linked.mesh.Origin(side)] = true;
    }
    for (Index side = 0; side < linked.twin.size(); ++side) {
      const Index from = linked.mesh.Origin(side), to = linked.mesh.Target(side);
      if (isAtHole[from] && isAtHole[to]) m_edges.insert(std::minmax(from, to));
    }
  }

  bool Fill(const std::vector<Index>& loop) {
    std::vector<Index> rim;  // vertices the way a facet in the hole runs
    std::vector<Vec3> points;
    for (const Index side : loop) {
      rim.push_back(m_linked.mesh.Target(side));
      points.push_back(m_linked.mesh.vertices[rim.back()]);
    }
    const LoopTriangles triangles = Triangulate(rim, points);
    if (triangles.empty()) return false;
    AddFacets(rim, loop, triangles);
    return true;
  }

 private:
  LoopTriangles Triangulate(const std::vector<Index>& rim, const std::vector<Vec3>& points) const {
    const auto mayJoin = [&](std::size_t i, std::size_t j) {
      return m_edges.count(std::minmax(rim[i], rim[j])) == 0;
    };
    if (points.size() <= kLongLoop) return TriangulateLoop(points, m_least, mayJoin);
    LoopTriangles triangles = TriangulateLongLoop(points);
    for (auto& [a, b, c] : triangles) {
      // The least of three places that run with the loop comes first.
      while (a > b || a > c) std::tie(a, b, c) = std::tuple(b, c, a);
      if (b > c) std::swap(b, c);
      const auto isFree = [&](std::size_t i, std::size_t j) {
        return j - i == 1 || j - i + 1 == rim.size() || mayJoin(i, j);
      };
      const SurfaceMesh::Facet facet{{rim[a], rim[b], rim[c]}, 0};
      if (!isFree(a, b) || !isFree(b, c) || !isFree(a, c)) return {};
      if (m_linked.mesh.Height(facet) < m_least) return {};
    }
    return triangles;
  }

  void AddFacets(const std::vector<Index>& rim, const std::vector<Index>& loop,
                 const LoopTriangles& triangles) {
    SurfaceMesh& mesh = m_linked.mesh;
    const auto first = static_cast<Index>(mesh.facets.size());
    std::map<Edge, Index> unlinked;  // sides by origin and target
    for (const Index side : loop) unlinked[{mesh.Origin(side), mesh.Target(side)}] = side;
    for (const auto& [a, b, c] : triangles) {
      const auto side = static_cast<Index>(m_linked.twin.size());
      mesh.facets.push_back({{rim[a], rim[b], rim[c]}, 0});
      m_linked.twin.resize(side + 3U, SurfaceMesh::kNone);
      for (Index s = side; s < side + 3; ++s) {
        const Edge back{mesh.Target(s), mesh.Origin(s)};
        const auto found = unlinked.find(back);
        if (found == unlinked.end()) {
          unlinked[{back.second, back.first}] = s;
        } else {
          m_linked.Link(s, found->second);
          unlinked.erase(found);
        }
        m_edges.insert(std::minmax(back.first, back.second));
      }
    }
    Colour(first);
  }

  // From the rim inwards.
  void Colour(Index first) {
    std::vector<Index> front;
    std::vector<bool> isColoured(m_linked.mesh.facets.size() - first, false);
    const auto spread = [&](Index facet) {
      for (Index side = 3 * facet; side < 3 * facet + 3; ++side) {
        if (m_linked.IsOpen(side)) continue;
        const Index other = m_linked.twin[side] / 3;
        if (facet >= first && other >= first && !isColoured[other - first]) {
          isColoured[other - first] = true;
          m_linked.mesh.facets[other].colour = m_linked.mesh.facets[facet].colour;
          front.push_back(other);
        }
      }
    };
    for (Index facet = first; facet < m_linked.mesh.facets.size(); ++facet) {
      for (Index side = 3 * facet; side < 3 * facet + 3; ++side) {
        if (isColoured[facet - first] || m_linked.IsOpen(side)) continue;
        const Index other = m_linked.twin[side] / 3;
        if (other >= first) continue;
        isColoured[facet - first] = true;
        m_linked.mesh.facets[facet].colour = m_linked.mesh.facets[other].colour;
        front.push_back(facet);
      }
    }
    for (std::size_t i = 0; i < front.size(); ++i) spread(front[i]);
  }

  LinkedMesh& m_linked;
  const double m_least;
  std::set<Edge> m_edges;  // between vertices at holes
};

// Takes the facets from `first` on out of bodies that would be flat. Returns how many holes that
// opens again: a fill is in one piece.
std::size_t UndoFlatFills(LinkedMesh& linked, Index first, const std::vector<Index>& holeOfFill,
                          double least) {
  const std::vector<Index> bodies = linked.Bodies();
  const std::vector<BodyMeasure> measures = MeasureBodies(linked, bodies);
  std::vector<bool> removed(linked.mesh.facets.size(), false);
  std::set<Index> opened;
  for (Index f = first; f < linked.mesh.facets.size(); ++f) {
    const BodyMeasure& body = measures[bodies[f]];
    if (std::abs(body.volume) > least * body.area) continue;
    removed[f] = true;
    opened.insert(holeOfFill[f - first]);
  }
  if (!opened.empty()) linked.Erase(removed);
  return opened.size();
}

}  // namespace

FilledHoles FillHoles(LinkedMesh& linked, double least, const Tell& tell) {
  const std::vector<std::vector<Index>> loops = HoleLoops(linked);
  FilledHoles holes;
  if (loops.empty()) return holes;
  const auto first = static_cast<Index>(linked.mesh.facets.size());
  Filler filler(linked, loops, least);
  std::vector<Index> holeOfFill;
  for (std::size_t i = 0; i < loops.size(); ++i) {
    tell(static_cast<double>(i) / static_cast<double>(loops.size()));
    ++(filler.Fill(loops[i]) ? holes.filled : holes.unfilled);
    holeOfFill.resize(linked.mesh.facets.size() - first, static_cast<Index>(i));
  }
  const std::size_t undone = UndoFlatFills(linked, first, holeOfFill, least);
  holes.filled -= undone;
  holes.unfilled += undone;
  return holes;
}

}  // namespace kernel
