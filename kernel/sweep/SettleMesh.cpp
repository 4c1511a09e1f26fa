#include "kernel/sweep/SettleMesh.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Kind = MeshPlace::Kind;
using Watch = std::function<void(double)>;

// Each round halves what is off at the least; what has not settled by then never does.
constexpr int kMostRounds = 6;
// The share of the work that the vertices are, and the first look at edges and facets.
constexpr double kVerticesDone = 0.2;
constexpr double kFirstRoundDone = 0.95;

class Settler {
 public:
  Settler(HalfEdgeMesh& mesh, const SurfaceSurvey& survey, const SettleLimits& limits)
      : m_mesh(mesh), m_survey(survey), m_limits(limits) {}

  Unsettled Run(const Watch& watch) {
    MoveVertices([&](double share) { watch(kVerticesDone * share); });
    std::vector<Index> due;
    for (Index facet = 0; facet < m_mesh.FacetCount(); ++facet) {
      if (m_mesh.IsLive(facet)) due.push_back(facet);
    }
    due = Refine(due, [&](double share) {
      watch(kVerticesDone + (kFirstRoundDone - kVerticesDone) * share);
    });
    for (int round = 1; round < kMostRounds && !due.empty(); ++round) {
      due = Refine(due, [&](double) { watch(kFirstRoundDone); });
    }
    Survey(PlacesOf(due), [&](double) { watch(kFirstRoundDone); });
    return Count();
  }

 private:
  // Keeps in mind what is beyond the tolerance, until the place settles or is looked at again.
  std::vector<SurveyFinding> Survey(const std::vector<MeshPlace>& places, const Watch& watch) {
    std::vector<SurveyFinding> findings = m_survey.Of(places, watch);
    if (!m_beyond.empty()) {
      for (const MeshPlace& place : places) m_beyond.erase(place);
    }
    for (const SurveyFinding& finding : findings) {
      if (std::abs(finding.off) > m_limits.tolerance) m_beyond[finding.place] = finding.off;
    }
    return findings;
  }

  Unsettled Count() const {
    Unsettled unsettled{m_beyond.size(), 0};
    for (const auto& [place, off] : m_beyond) {
      unsettled.farthest = std::max(unsettled.farthest, std::abs(off));
    }
    return unsettled;
  }

  void MoveVertices(const Watch& watch) {
    std::vector<MeshPlace> places;
    for (Index vertex = 0; vertex < m_mesh.VertexCount(); ++vertex) {
      if (m_mesh.Out(vertex) != HalfEdgeMesh::kNone) places.push_back({Kind::kVertex, vertex});
    }
    for (const SurveyFinding& finding : Survey(places, watch)) {
      const Index vertex = finding.place.index;
      const bool isGone = m_mesh.Out(vertex) == HalfEdgeMesh::kNone;
      if (isGone || (finding.settled && (MoveAlone(vertex, *finding.settled) || Absorb(finding)))) {
        m_beyond.erase(finding.place);
      }
    }
  }

  bool MoveAlone(Index vertex, const Vec3& to) {
    if (!MayMove(m_mesh, vertex, to)) return false;
    m_mesh.MoveTo(vertex, to);
    return true;
  }

  // Makes one vertex of the finding's and a neighbour that is in its way.
  bool Absorb(const SurveyFinding& finding) {
    const Index vertex = finding.place.index;
    for (const Index half : finding.absorbable) {
      // Another vertex may have taken it meanwhile.
      if (m_mesh.Origin(half) != vertex) continue;
      const Index neighbour = m_mesh.Target(half);
      if (!m_mesh.CanCollapse(m_mesh.Twin(half)) ||
          !MayMove(m_mesh, vertex, *finding.settled, neighbour) ||
          !MayMove(m_mesh, neighbour, *finding.settled, vertex)) {
        continue;
      }
      m_mesh.Collapse(m_mesh.Twin(half));
      m_mesh.MoveTo(vertex, *finding.settled);
      return true;
    }
    return false;
  }

  // The facets and their edges, each once.
  std::vector<MeshPlace> PlacesOf(const std::vector<Index>& facets) const {
    const std::vector<Index> edges = m_mesh.EdgesOf(facets);
    std::vector<MeshPlace> places;
    places.reserve(facets.size() + edges.size());
    for (const Index facet : facets) places.push_back({Kind::kFacet, facet});
    for (const Index half : edges) places.push_back({Kind::kEdge, half});
    return places;
  }

  // Returns the facets to look at again: changed ones, and their neighbours that wait for that.
  std::vector<Index> Refine(const std::vector<Index>& due, const Watch& watch) {
    const auto before = static_cast<Index>(m_mesh.FacetCount());
    std::vector<bool> changed(before, false);
    std::vector<Index> again;
    for (const SurveyFinding& finding : Survey(PlacesOf(due), watch)) {
      const bool isEdge = finding.place.kind == Kind::kEdge;
      const Index facet = isEdge ? finding.place.index / 3 : finding.place.index;
      if (changed[facet]) continue;
      if (finding.colour) m_mesh.SetColour(facet, *finding.colour);
      if (!finding.settled) continue;
      const bool splitsEdge = finding.splits.kind == Kind::kEdge;
      const Index beyond = splitsEdge ? m_mesh.Twin(finding.splits.index) / 3 : facet;
      if (beyond >= before || changed[beyond]) {
        again.push_back(facet);
        continue;
      }
      if (splitsEdge) {
        m_mesh.SplitEdge(finding.splits.index, *finding.settled);
      } else {
        m_mesh.SplitFacet(facet, *finding.settled);
      }
      changed[facet] = changed[beyond] = true;
      m_beyond.erase(finding.place);
    }
    for (Index facet = 0; facet < m_mesh.FacetCount(); ++facet) {
      if (facet >= before || changed[facet]) again.push_back(facet);
    }
    std::sort(again.begin(), again.end());
    again.erase(std::unique(again.begin(), again.end()), again.end());
    return again;
  }

  HalfEdgeMesh& m_mesh;
  const SurfaceSurvey& m_survey;
  SettleLimits m_limits;
  std::map<MeshPlace, double> m_beyond;
};

}  // namespace

Unsettled SettleMesh(HalfEdgeMesh& mesh, const SurfaceSurvey& survey, const SettleLimits& limits,
                     const std::function<void(double)>& watch) {
  return Settler(mesh, survey, limits).Run(watch);
}

}  // namespace kernel
