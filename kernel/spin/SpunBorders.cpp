#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "kernel/spin/FoldedFacet.h"
#include "kernel/spin/SpunArc.h"
#include "kernel/spin/SpunEdges.h"

namespace kernel {
namespace {

using Number = std::uint32_t;

// What a facet adds to the step across one of its sides, seen from the side's lower vertex to its
// higher one: so much from the share `at` of the way on.
struct StepChange {
  Number low, high;
  double at;
  int change;
};

class SpunBorderMaker {
 public:
  SpunBorderMaker(const StockMesh& mesh, double tolerance) : m_mesh(mesh), m_tolerance(tolerance) {}

  std::vector<SpunEdge> Make(std::span<const Number> facets) {
    for (const Number facet : facets) AddFacet(m_mesh.facets[facet]);
    std::sort(m_changes.begin(), m_changes.end(), [](const StepChange& a, const StepChange& b) {
      if (a.low != b.low) return a.low < b.low;
      if (a.high != b.high) return a.high < b.high;
      return a.at < b.at;
    });
    for (std::size_t i = 0; i < m_changes.size();) i = AddBorders(i);
    return std::move(m_edges);
  }

 private:
  const Vec3& Place(Number vertex) const { return m_mesh.vertices[vertex]; }

  void AddFacet(const StockMesh::Facet& facet) {
    const auto& v = facet.vertices;
    const FoldedFacet folded({Place(v[0]), Place(v[1]), Place(v[2])});
    for (std::size_t i = 0; i < 3; ++i) AddSide(v, folded, i);
    if (const auto fold = folded.FoldAcross()) {
      AddFold(folded, PlaceOf(v, folded, fold->from), PlaceOf(v, folded, fold->to));
    }
  }

  void AddSide(const std::array<Number, 3>& v, const FoldedFacet& folded, std::size_t side) {
    const std::size_t next = (side + 1) % 3;
    int atLow = folded.SenseAtStart(side), atHigh = folded.SenseAtEnd(side);
    if (atLow == 0) return;
    std::size_t low = side, high = next;
    if (v[side] > v[next]) {
      // Run through backwards, the facet is on the other side.
      low = next;
      high = side;
      atLow = -std::exchange(atHigh, -atLow);
    }
    m_changes.push_back({v[low], v[high], 0, atLow});
    if (atHigh == atLow) return;
    m_changes.push_back({v[low], v[high], folded.ChangeBetween(low, high), atHigh - atLow});
  }

  // The same place to the last bit as where the step across that side changes.
  Vec3 PlaceOf(const std::array<Number, 3>& v, const FoldedFacet& folded,
               const FoldedFacet::BorderPlace& place) const {
    std::size_t low = place.corner, high = (place.corner + 1) % 3;
    if (!place.onSide) return Place(v[low]);
    if (v[low] > v[high]) std::swap(low, high);
    return SpunArc(Place(v[low]), Place(v[high])).PlaceAt(folded.ChangeBetween(low, high));
  }

  void AddFold(const FoldedFacet& folded, const Vec3& from, const Vec3& to) {
    // Both parts of the facet are on the same side of the fold when they are spun.
    const Winding twice{2, 0};
    const Point2 start = Spun(from), end = Spun(to);
    const double atStart = folded.HeightAt(from), atEnd = folded.HeightAt(to);
    if ((atStart < 0) == (atEnd < 0) || atStart == 0 || atEnd == 0) {
      m_edges.push_back({start, end, twice});
      return;
    }
    const Point2 onAxis{start.x + (end.x - start.x) * (atStart / (atStart - atEnd)), 0};
    m_edges.push_back({start, onAxis, twice});
    m_edges.push_back({onAxis, end, twice});
  }

  // The pieces of the edge whose first change is `first`; returns where the next edge's begin.
  std::size_t AddBorders(std::size_t first) {
    const Number low = m_changes[first].low, high = m_changes[first].high;
    const SpunArc arc(Place(low), Place(high));
    const bool forwards = Place(low).x < Place(high).x;
    int step = 0;
    std::size_t i = first;
    while (i < m_changes.size() && m_changes[i].low == low && m_changes[i].high == high) {
      step += m_changes[i].change;
      const double begin = m_changes[i++].at;
      const bool more =
          i < m_changes.size() && m_changes[i].low == low && m_changes[i].high == high;
      const double end = more ? m_changes[i].at : 1;
      if (step == 0 || begin >= end) continue;
      m_points.clear();
      const bool moreAbove = (step > 0) == forwards;
      arc.AddPieces(begin, end, moreAbove, m_tolerance, m_points);
      for (std::size_t p = 1; p < m_points.size(); ++p) {
        m_edges.push_back({m_points[p - 1], m_points[p], {step, 0}});
      }
    }
    return i;
  }

  const StockMesh& m_mesh;
  double m_tolerance;
  std::vector<StepChange> m_changes;
  std::vector<Point2> m_points;
  std::vector<SpunEdge> m_edges;
};

}  // namespace

std::vector<SpunEdge> SpunBorders(const StockMesh& mesh, std::span<const std::uint32_t> facets,
                                  double tolerance) {
  return SpunBorderMaker(mesh, tolerance).Make(facets);
}

}  // namespace kernel
