#include "kernel/offset/MendOffset.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "kernel/offset/EachOnOffset.h"
#include "kernel/offset/FindMissed.h"
#include "kernel/offset/MendFolds.h"
#include "kernel/offset/RefineOffset.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

constexpr int kMostPasses = 2;
// More passes in which points are covered and nothing is mended: what covers a narrow ridge may
// cost more, by the places that are looked at, than what passes it. In the end it stays.
constexpr int kLastPasses = 4;
constexpr int kLastRounds = 4;      // of refining what is off in the end
constexpr double kUncovered = 0.8;  // of the tolerance
// The share of the work that the first look is.
constexpr double kLookDone = 0.3;

class Mender {
 public:
  Mender(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits)
      : m_mesh(mesh),
        m_makers(makers),
        m_limits(limits),
        m_firstNew(static_cast<Index>(mesh.FacetCount())) {}

  OffPlaces Run(const std::vector<Index>& left, std::vector<UncoveredPoint> uncovered,
                const Watch& watch) {
    std::vector<Index> due = Suspects([&](double share) { watch(kLookDone * share); });
    Add(left, due);
    const auto later = [&] { watch(kLookDone); };
    Mend(due, later);
    for (int pass = 0; pass < kMostPasses + kLastPasses && !uncovered.empty(); ++pass) {
      uncovered =
          StillUncovered(m_mesh, Near(uncovered), uncovered, kUncovered * m_limits.tolerance);
      due = CoverPoints(m_mesh, m_makers, m_limits, uncovered);
      if (due.empty()) break;
      if (pass < kMostPasses) {
        Mend(due, later);
      } else {
        Add(due, m_looked);
      }
    }
    Keep(m_looked);
    RefineOff(later);
    return Count(m_looked, watch);
  }

 private:
  // What no mend has helped may still be split.
  void RefineOff(const std::function<void()>& watch) {
    std::vector<std::uint8_t> isOff(m_looked.size(), 0);
    ForEachInChunks(
        m_looked.size(), m_makers, [&](double) { watch(); },
        [&](const LocalOffset& solid, std::size_t i) {
          const Index half = 3 * m_looked[i];
          for (const Vec3& place :
               {CentreOf(m_looked[i]), MiddleOf(half), MiddleOf(half + 1), MiddleOf(half + 2)}) {
            if (std::abs(solid.HowFarOff(place).distance) > m_limits.tolerance) isOff[i] = 1;
          }
        });
    std::vector<Index> due;
    for (std::size_t i = 0; i < isOff.size(); ++i) {
      if (isOff[i] != 0) due.push_back(m_looked[i]);
    }
    const auto firstNew = static_cast<Index>(m_mesh.FacetCount());
    RefineOffset(m_mesh, m_makers, m_limits, std::move(due), kLastRounds, [&](double) { watch(); });
    for (Index facet = firstNew; facet < m_mesh.FacetCount(); ++facet) m_looked.push_back(facet);
    Keep(m_looked);
  }

  // The facets that were nearest to the points, as far as they are left, and all that is new since.
  std::vector<Index> Near(const std::vector<UncoveredPoint>& points) const {
    std::vector<Index> facets;
    facets.reserve(points.size() + m_mesh.FacetCount() - m_firstNew);
    for (const UncoveredPoint& point : points) facets.push_back(point.facet);
    for (Index facet = m_firstNew; facet < m_mesh.FacetCount(); ++facet) facets.push_back(facet);
    Add(m_looked, facets);
    Keep(facets);
    return facets;
  }

  void Mend(const std::vector<Index>& due, const std::function<void()>& watch) {
    Add(due, m_looked);
    Add(MendFolds(m_mesh, m_makers, m_limits, due, watch), m_looked);
  }

  Vec3 MiddleOf(Index half) const {
    return (m_mesh.At(m_mesh.Origin(half)) + m_mesh.At(m_mesh.Target(half))) / 2;
  }
  Vec3 CentreOf(Index facet) const {
    return (m_mesh.At(m_mesh.Origin(3 * facet)) + m_mesh.At(m_mesh.Origin(3 * facet + 1)) +
            m_mesh.At(m_mesh.Origin(3 * facet + 2))) /
           3;
  }
  static void Add(const std::vector<Index>& some, std::vector<Index>& all) {
    all.insert(all.end(), some.begin(), some.end());
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
  }
  // Facets may have gone meanwhile.
  void Keep(std::vector<Index>& facets) const {
    std::erase_if(facets, [&](Index facet) { return !m_mesh.IsLive(facet); });
  }

  // Facets whose middle is off or that face aside there.
  std::vector<Index> Suspects(const Watch& watch) const {
    std::vector<std::uint8_t> isOne(m_mesh.FacetCount(), 0);
    ForEachInChunks(isOne.size(), m_makers, watch, [&](const LocalOffset& solid, std::size_t i) {
      const auto facet = static_cast<Index>(i);
      if (!m_mesh.IsLive(facet)) return;
      const Vec3 centre = CentreOf(facet);
      const OffSurface off = solid.HowFarOff(centre);
      const Vec3& a = m_mesh.At(m_mesh.Origin(3 * facet));
      const Vec3 normal = Cross(m_mesh.At(m_mesh.Origin(3 * facet + 1)) - a,
                                m_mesh.At(m_mesh.Origin(3 * facet + 2)) - a);
      const Vec3 outward = solid.From(off.maker, centre).plane.normal;
      const double facing = Dot(normal, outward);
      isOne[i] = std::abs(off.distance) * Length(normal) > m_limits.tolerance / 2 * facing;
    });
    std::vector<Index> suspects;
    for (Index facet = 0; facet < isOne.size(); ++facet) {
      if (isOne[facet] != 0) suspects.push_back(facet);
    }
    return suspects;
  }

  OffPlaces Count(const std::vector<Index>& due, const Watch& watch) const {
    const std::vector<Index> edges = m_mesh.EdgesOf(due);
    std::vector<Vec3> places;
    places.reserve(due.size() + edges.size());
    for (const Index facet : due) places.push_back(CentreOf(facet));
    for (const Index half : edges) places.push_back(MiddleOf(half));
    std::vector<double> off(places.size());
    ForEachInChunks(
        places.size(), m_makers, [&](double) { watch(1); },
        [&](const LocalOffset& solid, std::size_t i) {
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
  Index m_firstNew;
  std::vector<Index> m_looked;  // at all, to tell what is left
};

}  // namespace

OffPlaces MendOffset(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
                     const std::vector<HalfEdgeMesh::Index>& left,
                     std::vector<UncoveredPoint> uncovered, const Watch& watch) {
  return Mender(mesh, makers, limits).Run(left, std::move(uncovered), watch);
}

}  // namespace kernel
