#include "kernel/offset/CoverPoints.h"

#include <algorithm>
#include <limits>

#include "kernel/offset/FacetFit.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

class Coverer {
 public:
  Coverer(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits)
      : m_mesh(mesh), m_solid(makers), m_limits(limits), m_isChanged(mesh.FacetCount(), false) {}

  void Cover(const UncoveredPoint& point) {
    if (IsChanged(point.facet)) return;
    m_point = point.at;
    m_least = std::numeric_limits<double>::infinity();
    m_way = Way::kNone;
    ConsiderFacet(point.facet);
    for (Index half = 3 * point.facet; half < 3 * point.facet + 3; ++half) {
      ConsiderEdge(half);
      ConsiderCorner(half);
    }
    Apply();
  }

  std::vector<Index> Changed() const {
    std::vector<Index> changed;
    for (Index facet = 0; facet < m_mesh.FacetCount(); ++facet) {
      if (IsChanged(facet) && m_mesh.IsLive(facet)) changed.push_back(facet);
    }
    return changed;
  }

 private:
  enum class Way { kNone, kFacet, kEdge, kCorner };

  bool IsChanged(Index facet) const {
    return facet >= m_isChanged.size() || m_isChanged[facet] || !m_mesh.IsLive(facet);
  }
  const Vec3& From(Index half) const { return m_mesh.At(m_mesh.Origin(half)); }
  const Vec3& To(Index half) const { return m_mesh.At(m_mesh.Target(half)); }
  const Vec3& Left(Index half) const { return m_mesh.At(m_mesh.Target(HalfEdgeMesh::Next(half))); }

  double CostOf(Index facet) const {
    return FitOf(m_solid, {From(3 * facet), From(3 * facet + 1), From(3 * facet + 2)}, m_limits)
        .cost;
  }

  void Consider(Way way, Index half, double before, const std::vector<Corners>& facets) {
    for (const Corners& f : facets) {
      if (!IsSoundFacet(f[0], f[1], f[2], Cross(f[1] - f[0], f[2] - f[0]))) return;
    }
    double cost = -before;
    for (const Corners& facet : facets) {
      const FacetFit fit = FitOf(m_solid, facet, m_limits);
      if (fit.fold > m_limits.tolerance) return;
      cost += fit.cost;
    }
    if (cost >= m_least) return;
    m_least = cost;
    m_way = way;
    m_half = half;
  }

  void ConsiderFacet(Index facet) {
    std::vector<Corners> facets;
    for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
      facets.push_back({From(half), To(half), m_point});
    }
    Consider(Way::kFacet, 3 * facet, CostOf(facet), facets);
  }

  void ConsiderEdge(Index half) {
    const Index twin = m_mesh.Twin(half);
    if (IsChanged(twin / 3)) return;
    std::vector<Corners> facets;
    for (const Index side : {half, twin}) {
      facets.push_back({From(side), m_point, Left(side)});
      facets.push_back({m_point, To(side), Left(side)});
    }
    Consider(Way::kEdge, half, CostOf(half / 3) + CostOf(twin / 3), facets);
  }

  void ConsiderCorner(Index half) {
    std::vector<Corners> facets;
    double before = 0;
    Index out = half;
    do {
      if (IsChanged(out / 3)) return;
      before += CostOf(out / 3);
      facets.push_back({m_point, To(out), Left(out)});
      out = m_mesh.Around(out);
    } while (out != half);
    // A corner that gives up a place must leave it to facets that fit.
    if (Length(m_point - From(half)) > m_limits.tolerance) return;
    Consider(Way::kCorner, half, before, facets);
  }

  void Apply() {
    switch (m_way) {
      case Way::kNone:
        return;
      case Way::kFacet:
        Mark(m_half / 3);
        m_mesh.SplitFacet(m_half / 3, m_point);
        return;
      case Way::kEdge:
        Mark(m_half / 3);
        Mark(m_mesh.Twin(m_half) / 3);
        m_mesh.SplitEdge(m_half, m_point);
        return;
      case Way::kCorner:
        Index out = m_half;
        do {
          Mark(out / 3);
          out = m_mesh.Around(out);
        } while (out != m_half);
        m_mesh.MoveTo(m_mesh.Origin(m_half), m_point);
        return;
    }
  }

  void Mark(Index facet) { m_isChanged[facet] = true; }

  HalfEdgeMesh& m_mesh;
  LocalOffset m_solid;
  OffsetLimits m_limits;
  std::vector<bool> m_isChanged;
  Vec3 m_point;
  double m_least = 0;  // more cost than before
  Way m_way = Way::kNone;
  Index m_half = 0;
};

}  // namespace

std::vector<Index> CoverPoints(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                               const OffsetLimits& limits, std::vector<UncoveredPoint> points) {
  std::stable_sort(
      points.begin(), points.end(),
      [](const UncoveredPoint& a, const UncoveredPoint& b) { return a.distance > b.distance; });
  Coverer coverer(mesh, makers, limits);
  for (const UncoveredPoint& point : points) coverer.Cover(point);
  return coverer.Changed();
}

}  // namespace kernel
