#include "kernel/offset/RefineOffset.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "kernel/offset/EachOnOffset.h"
#include "kernel/offset/OffsetSurvey.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

constexpr double kShort = 0.1;  // of the edge that was turned, to join the new one's ends
// The share of the work that the first round is.
constexpr double kFirstRoundDone = 0.6;

class Refiner {
 public:
  Refiner(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits)
      : m_mesh(mesh), m_makers(makers), m_limits(limits) {}

  std::vector<Index> Run(std::vector<Index> due, int rounds, const Watch& watch) {
    for (int round = 0; round < rounds && !due.empty(); ++round) {
      due = Refine(due, [&](double share) {
        watch(round == 0 ? kFirstRoundDone * share : kFirstRoundDone);
      });
    }
    m_isStuck.resize(m_mesh.FacetCount(), false);
    for (const Index facet : due) m_isStuck[facet] = true;
    std::vector<Index> left;
    for (Index facet = 0; facet < m_isStuck.size(); ++facet) {
      if (m_isStuck[facet] && m_mesh.IsLive(facet)) left.push_back(facet);
    }
    return left;
  }

 private:
  double LengthOf(Index half) const {
    return Length(m_mesh.At(m_mesh.Target(half)) - m_mesh.At(m_mesh.Origin(half)));
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
                // What a turned edge mends needs no new vertex.
                if (a.turns != b.turns) return a.turns;
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

  HalfEdgeMesh& m_mesh;
  const OffsetMakers& m_makers;
  OffsetLimits m_limits;
  std::vector<bool> m_isStuck;  // by facet: it, or an edge of it, is off and could not be changed
};

}  // namespace

std::vector<HalfEdgeMesh::Index> RefineOffset(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                                              const OffsetLimits& limits,
                                              std::vector<HalfEdgeMesh::Index> due, int rounds,
                                              const Watch& watch) {
  return Refiner(mesh, makers, limits).Run(std::move(due), rounds, watch);
}

}  // namespace kernel
