#include "kernel/offset/RefineOffset.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "kernel/offset/EachOnOffset.h"
#include "kernel/offset/OffsetSurvey.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

// What has not come to rest by then never does: edges and facets, and vertices in each other's way.
constexpr int kMostRounds = 10;
constexpr int kMostPasses = 6;
constexpr double kVertexShare = 0.1;  // of the tolerance, that a vertex may stay off
constexpr double kShort = 0.1;        // of the edge that was turned, to join the new one's ends
// Shares of the tolerance: the least and the most that a vertex is moved beyond the surface, and
// what its edges may be off for that.
constexpr double kLeastShift = 0.1;
constexpr double kMostShift = 0.4;
constexpr double kMostBend = 4;
// The share of the work that the vertices are, and the first round.
constexpr double kVerticesDone = 0.3;
constexpr double kFirstRoundDone = 0.7;

class Refiner {
 public:
  Refiner(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits)
      : m_mesh(mesh), m_makers(makers), m_limits(limits) {}

  OffPlaces Run(const Watch& watch) {
    MoveVertices([&](double share) { watch(kVerticesDone / 2 * share); });
    std::vector<Index> due;
    for (Index facet = 0; facet < m_mesh.FacetCount(); ++facet) {
      if (m_mesh.IsLive(facet)) due.push_back(facet);
    }
    Balance(m_mesh.EdgesOf(due), [&](double share) { watch(kVerticesDone / 2 * (1 + share)); });
    due = Refine(due, [&](double share) {
      watch(kVerticesDone + (kFirstRoundDone - kVerticesDone) * share);
    });
    for (int round = 1; round < kMostRounds && !due.empty(); ++round) {
      due = Refine(due, [&](double) { watch(kFirstRoundDone); });
    }
    return Count(due, [&](double) { watch(kFirstRoundDone); });
  }

 private:
  Vec3 MiddleOf(Index half) const {
    return (m_mesh.At(m_mesh.Origin(half)) + m_mesh.At(m_mesh.Target(half))) / 2;
  }
  Vec3 CentreOf(Index facet) const {
    return (m_mesh.At(m_mesh.Origin(3 * facet)) + m_mesh.At(m_mesh.Origin(3 * facet + 1)) +
            m_mesh.At(m_mesh.Origin(3 * facet + 2))) /
           3;
  }
  double LengthOf(Index half) const {
    return Length(m_mesh.At(m_mesh.Target(half)) - m_mesh.At(m_mesh.Origin(half)));
  }

  void MoveVertices(const Watch& watch) {
    std::vector<std::optional<Vec3>> target(m_mesh.VertexCount());
    std::vector<double> off(m_mesh.VertexCount());
    ForEachInChunks(target.size(), m_makers, watch, [&](const LocalOffset& solid, std::size_t i) {
      const Vec3& point = m_mesh.At(static_cast<Index>(i));
      off[i] = std::abs(solid.HowFarOff(point).distance);
      if (off[i] > m_limits.exact) target[i] = PlaceOnOffset(solid, point, m_limits);
    });
    std::vector<Index> waiting;
    for (Index vertex = 0; vertex < target.size(); ++vertex) {
      if (off[vertex] > m_limits.exact) waiting.push_back(vertex);
    }
    // One that is in the way of another may be gone the next time.
    for (int pass = 0; pass < kMostPasses && !waiting.empty(); ++pass) {
      std::erase_if(waiting, [&](Index vertex) {
        if (!target[vertex] || !MayMove(m_mesh, vertex, *target[vertex])) return false;
        m_mesh.MoveTo(vertex, *target[vertex]);
        return true;
      });
    }
    std::erase_if(waiting, [&](Index vertex) {
      return off[vertex] <= kVertexShare * m_limits.tolerance || GiveUp(vertex);
    });
    m_stuckVertices = std::move(waiting);
  }

  // Lets a vertex that has no place become one with a neighbour, the nearest that does.
  bool GiveUp(Index vertex) {
    std::vector<Index> halves;
    Index half = m_mesh.Out(vertex);
    if (half == HalfEdgeMesh::kNone) return true;
    do {
      halves.push_back(half);
      half = m_mesh.Around(half);
    } while (half != m_mesh.Out(vertex));
    std::sort(halves.begin(), halves.end(), [&](Index a, Index b) {
      return LengthOf(a) != LengthOf(b) ? LengthOf(a) < LengthOf(b) : a < b;
    });
    for (const Index out : halves) {
      const Index neighbour = m_mesh.Target(out);
      if (!m_mesh.CanCollapse(out) || !MayMove(m_mesh, vertex, m_mesh.At(neighbour), neighbour)) {
        continue;
      }
      m_mesh.Collapse(out);
      return true;
    }
    return false;
  }

  // On a curved piece, moves vertices beyond the surface by half of what the middles of their edges
  // lie short of it, so that both are off by less and facets may be larger. On a flat piece there
  // is nothing to move.
  void Balance(const std::vector<Index>& edges, const Watch& watch) {
    std::vector<double> off(edges.size());
    ForEachInChunks(
        off.size(), m_makers, [&](double share) { watch(share / 2); },
        [&](const LocalOffset& solid, std::size_t i) {
          off[i] = solid.HowFarOff(MiddleOf(edges[i])).distance;
        });
    struct Around {
      double sum = 0, low = 0, high = 0;
      int count = 0;
    };
    std::vector<Around> around(m_mesh.VertexCount());
    for (std::size_t i = 0; i < edges.size(); ++i) {
      for (const Index vertex : {m_mesh.Origin(edges[i]), m_mesh.Target(edges[i])}) {
        Around& one = around[vertex];
        one.sum += off[i];
        one.low = std::min(one.low, off[i]);
        one.high = std::max(one.high, off[i]);
        ++one.count;
      }
    }
    const double little = kLeastShift * m_limits.tolerance;
    std::vector<Vec3> shift(around.size());
    ForEachInChunks(
        around.size(), m_makers, [&](double share) { watch(0.5 + share / 2); },
        [&](const LocalOffset& solid, std::size_t i) {
          const Around& one = around[i];
          if (one.count == 0 || std::min(-one.low, one.high) > little) return;
          if (std::max(-one.low, one.high) > kMostBend * m_limits.tolerance) return;
          const double mean = one.sum / one.count;
          if (std::abs(mean) <= little) return;
          const Vec3& at = m_mesh.At(static_cast<Index>(i));
          const double most = kMostShift * m_limits.tolerance;
          shift[i] = solid.From(solid.HowFarOff(at).maker, at).plane.normal *
                     std::clamp(-mean / 2, -most, most);
        });
    for (Index vertex = 0; vertex < shift.size(); ++vertex) {
      if (shift[vertex] == Vec3{}) continue;
      const Vec3 to = m_mesh.At(vertex) + shift[vertex];
      if (MayMove(m_mesh, vertex, to)) m_mesh.MoveTo(vertex, to);
    }
  }

  // Returns the facets to look at again: changed ones, and those that wait for a neighbour.
  std::vector<Index> Refine(const std::vector<Index>& due, const Watch& watch) {
    m_isStuck.resize(m_mesh.FacetCount(), false);
    for (const Index facet : due) m_isStuck[facet] = false;
    const OffsetSurvey survey(m_mesh, m_makers, m_limits);
    std::vector<std::uint8_t> colours;
    std::vector<OffsetChange> candidates =
        survey.ForFacets(due, colours, [&](double share) { watch(share / 2); });
    for (std::size_t i = 0; i < due.size(); ++i) m_mesh.SetColour(due[i], colours[i]);
    const std::vector<OffsetChange> forEdges =
        survey.ForEdges(m_mesh.EdgesOf(due), [&](double share) { watch(0.5 + share / 2); });
    candidates.insert(candidates.end(), forEdges.begin(), forEdges.end());
    std::sort(candidates.begin(), candidates.end(),
              [](const OffsetChange& a, const OffsetChange& b) {
                return a.length != b.length ? a.length > b.length : a.half < b.half;
              });
    std::vector<bool> changed(m_mesh.FacetCount(), false);
    std::vector<Index> again;
    for (const OffsetChange& candidate : candidates) Change(candidate, changed, again);
    for (Index facet = 0; facet < m_mesh.FacetCount(); ++facet) {
      if (facet >= changed.size() || changed[facet]) again.push_back(facet);
    }
    std::erase_if(again, [&](Index facet) { return !m_mesh.IsLive(facet); });
    std::sort(again.begin(), again.end());
    again.erase(std::unique(again.begin(), again.end()), again.end());
    return again;
  }

  void Change(const OffsetChange& candidate, std::vector<bool>& changed,
              std::vector<Index>& again) {
    const Index facet = candidate.half / 3;
    if (!m_mesh.IsLive(facet)) return;
    if (candidate.moves) {
      Move(candidate, changed, again);
      return;
    }
    const Index beyond = m_mesh.Twin(candidate.half) / 3;
    if (facet >= changed.size() || beyond >= changed.size() || changed[facet] || changed[beyond]) {
      // Changed facets are looked at again anyway.
      again.push_back(facet);
      return;
    }
    if (candidate.turns && m_mesh.CanFlip(candidate.half)) {
      m_mesh.Flip(candidate.half);
      // The turned edge is the last side of the facet.
      if (JoinsWell(3 * facet + 2, candidate.length)) {
        Join(3 * facet + 2, changed);
        return;
      }
    } else if (candidate.at) {
      m_mesh.SplitEdge(candidate.half, *candidate.at);
    } else {
      m_isStuck[facet] = true;
      return;
    }
    changed[facet] = changed[beyond] = true;
  }

  // Whether an edge is so short that its ends, beside each other on a crease, may become one.
  bool JoinsWell(Index half, double length) const {
    const Index kept = m_mesh.Target(half);
    return LengthOf(half) < kShort * length && m_mesh.CanCollapse(half) &&
           MayMove(m_mesh, m_mesh.Origin(half), m_mesh.At(kept), kept);
  }

  void Join(Index half, std::vector<bool>& changed) {
    const Index kept = m_mesh.Target(half);
    m_mesh.Collapse(half);
    const Index first = m_mesh.Out(kept);
    Index out = first;
    do {
      if (out / 3 < changed.size()) changed[out / 3] = true;
      out = m_mesh.Around(out);
    } while (out != first);
  }

  void Move(const OffsetChange& candidate, std::vector<bool>& changed, std::vector<Index>& again) {
    std::vector<Index> around;
    Index out = candidate.half;
    do {
      around.push_back(out / 3);
      if (out / 3 >= changed.size() || changed[out / 3]) {
        again.push_back(candidate.half / 3);
        return;
      }
      out = m_mesh.Around(out);
    } while (out != candidate.half);
    m_mesh.MoveTo(m_mesh.Origin(candidate.half), *candidate.at);
    for (const Index facet : around) changed[facet] = true;
  }

  // Looks once more at what was not mended.
  OffPlaces Count(std::vector<Index> due, const Watch& watch) const {
    for (Index facet = 0; facet < m_isStuck.size(); ++facet) {
      if (m_isStuck[facet] && m_mesh.IsLive(facet)) due.push_back(facet);
    }
    const std::vector<Index> edges = m_mesh.EdgesOf(due);
    std::vector<Vec3> places;
    places.reserve(due.size() + edges.size() + m_stuckVertices.size());
    for (const Index facet : due) places.push_back(CentreOf(facet));
    for (const Index half : edges) places.push_back(MiddleOf(half));
    for (const Index vertex : m_stuckVertices) {
      if (m_mesh.Out(vertex) != HalfEdgeMesh::kNone) places.push_back(m_mesh.At(vertex));
    }
    std::vector<double> off(places.size());
    ForEachInChunks(places.size(), m_makers, watch, [&](const LocalOffset& solid, std::size_t i) {
      off[i] = std::abs(solid.HowFarOff(places[i]).distance);
    });
    OffPlaces left;
    for (const double one : off) {
      if (one <= m_limits.tolerance) continue;
      ++left.count;
      left.farthest = std::max(left.farthest, one);
    }
    return left;
  }

  HalfEdgeMesh& m_mesh;
  const OffsetMakers& m_makers;
  OffsetLimits m_limits;
  std::vector<Index> m_stuckVertices;
  std::vector<bool> m_isStuck;  // by facet: it, or an edge of it, is off and could not be changed
};

}  // namespace

OffPlaces RefineOffset(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
                       const std::function<void(double)>& watch) {
  return Refiner(mesh, makers, limits).Run(watch);
}

}  // namespace kernel
