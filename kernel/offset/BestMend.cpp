#include "kernel/offset/BestMend.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "kernel/offset/FacetFit.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

// A change must save so much of the cost around it. Where turning an edge saves the second, nothing
// else is tried.
constexpr double kLeastGain = 1e-3;
constexpr double kGoodGain = 0.3;
// Of the tolerance: there is little left then for what lies between the places looked at.
constexpr double kMostOff = 0.9;
constexpr double kMostValence = 24;

class Search {
 public:
  Search(const HalfEdgeMesh& mesh, const LocalOffset& solid, const OffsetLimits& limits)
      : m_mesh(mesh), m_solid(solid), m_limits(limits) {}

  // Whether it is off or folds.
  bool IsBad(Index facet) { return Fit(facet).IsBad(kMostOff * m_limits.tolerance); }

  // What helps a facet that is bad most. Where nothing does, and `mayLose`, what harms least.
  Mend BestFor(Index facet, bool mayLose) {
    ConsiderAll(facet);
    if (m_best.kind != Mend::Kind::kNone || !mayLose) return m_best;
    m_mayLose = true;
    m_best.gain = -std::numeric_limits<double>::infinity();
    ConsiderAll(facet);
    return m_best;
  }

 private:
  // Where a turned edge saves a good deal, nothing else is tried.
  void ConsiderAll(Index facet) {
    for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
      ConsiderFlip(half);
      ConsiderFlip(HalfEdgeMesh::Next(m_mesh.Twin(half)));
      ConsiderFlip(HalfEdgeMesh::Previous(m_mesh.Twin(half)));
    }
    if (m_best.gain > kGoodGain * Fit(facet).cost) return;
    ConsiderPoint(facet);
    for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
      ConsiderJoin(half);
      ConsiderJoin(m_mesh.Twin(half));
      ConsiderMove(half);
      ConsiderSplit(half);
    }
  }

  const Vec3& From(Index half) const { return m_mesh.At(m_mesh.Origin(half)); }
  const Vec3& To(Index half) const { return m_mesh.At(m_mesh.Target(half)); }
  const Vec3& Left(Index half) const { return m_mesh.At(m_mesh.Target(HalfEdgeMesh::Next(half))); }

  FacetFit Fit(Index facet) {
    for (const auto& [known, fit] : m_known) {
      if (known == facet) return fit;
    }
    const Corners corners = {From(3 * facet), From(3 * facet + 1), From(3 * facet + 2)};
    return m_known.emplace_back(facet, FitOf(m_solid, corners, m_limits)).second;
  }

  // Weighs facets that would be new, as long as they may be better than what is known.
  void Consider(Mend::Kind kind, Index half, const Vec3& at, double before,
                const std::vector<Corners>& facets) {
    // A place from which nothing but a detour leads may lose as much again as it costs.
    const double least = m_mayLose ? -before : kLeastGain * before;
    const double most = before - std::max(least, m_best.gain);
    if (most <= 0) return;
    for (const Corners& f : facets) {
      if (!IsSoundFacet(f[0], f[1], f[2], Cross(f[1] - f[0], f[2] - f[0]))) return;
    }
    double after = 0;
    for (const Corners& corners : facets) {
      after += FitOf(m_solid, corners, m_limits).cost;
      if (after >= most) return;
    }
    m_best = {kind, half, at, before - after};
  }

  double CostAt(Index half) { return Fit(half / 3).cost + Fit(m_mesh.Twin(half) / 3).cost; }

  void ConsiderFlip(Index half) {
    if (!m_mesh.CanFlip(half)) return;
    const Index twin = m_mesh.Twin(half);
    Consider(Mend::Kind::kFlip, half, {}, CostAt(half),
             {{Left(half), From(half), Left(twin)}, {Left(twin), To(half), Left(half)}});
  }

  void ConsiderSplit(Index half) {
    const Index twin = m_mesh.Twin(half);
    const auto consider = [&](const std::optional<PlaceAlongEdge>& place) {
      if (!place) return;
      const Vec3& at = place->at;
      Consider(Mend::Kind::kSplit, half, at, CostAt(half),
               {{From(half), at, Left(half)},
                {at, To(half), Left(half)},
                {at, From(half), Left(twin)},
                {To(half), at, Left(twin)}});
    };
    const std::optional<PlaceAlongEdge> best = PlaceOnEdge(m_solid, From(half), To(half), m_limits);
    consider(best);
    if (best && best->isCrease) {
      consider(PlaceAboveMiddle(m_solid, From(half), To(half), m_limits));
    }
  }

  // A new vertex above the place in the facet that is furthest off.
  void ConsiderPoint(Index facet) {
    const FacetFit fit = Fit(facet);
    const std::optional<Vec3> at = PlaceOnOffset(m_solid, fit.farthest, m_limits);
    if (!at) return;
    Consider(Mend::Kind::kPoint, 3 * facet, *at, fit.cost,
             {{From(3 * facet), To(3 * facet), *at},
              {From(3 * facet + 1), To(3 * facet + 1), *at},
              {From(3 * facet + 2), To(3 * facet + 2), *at}});
  }

  // The facets around a half edge's origin when that is elsewhere, without those at `merged`.
  std::vector<Corners> Ring(Index half, const Vec3& at, Index merged) const {
    std::vector<Corners> facets;
    Index out = half;
    do {
      if (m_mesh.Target(out) != merged && m_mesh.Target(HalfEdgeMesh::Next(out)) != merged) {
        facets.push_back({at, To(out), Left(out)});
      }
      out = m_mesh.Around(out);
    } while (out != half);
    return facets;
  }

  double RingCost(Index half) {
    double cost = 0;
    Index out = half;
    do {
      cost += Fit(out / 3).cost;
      out = m_mesh.Around(out);
    } while (out != half);
    return cost;
  }

  void ConsiderJoin(Index half) {
    if (!m_mesh.CanCollapse(half)) return;
    Consider(Mend::Kind::kJoin, half, {}, RingCost(half),
             Ring(half, To(half), m_mesh.Target(half)));
  }

  void ConsiderMove(Index half) {
    Vec3 middle;
    double count = 0;
    Index out = half;
    do {
      middle += To(out);
      ++count;
      out = m_mesh.Around(out);
    } while (out != half && count < kMostValence);
    const std::optional<Vec3> at = PlaceOnOffset(m_solid, middle / count, m_limits);
    if (!at) return;
    Consider(Mend::Kind::kMove, half, *at, RingCost(half), Ring(half, *at, HalfEdgeMesh::kNone));
  }

  const HalfEdgeMesh& m_mesh;
  const LocalOffset& m_solid;
  OffsetLimits m_limits;
  bool m_mayLose = false;
  Mend m_best;
  std::vector<std::pair<Index, FacetFit>> m_known;
};

}  // namespace

Mend BestMend(const HalfEdgeMesh& mesh, const LocalOffset& solid, const OffsetLimits& limits,
              HalfEdgeMesh::Index facet, bool mayLose) {
  Search search(mesh, solid, limits);
  return search.IsBad(facet) ? search.BestFor(facet, mayLose) : Mend();
}

}  // namespace kernel
