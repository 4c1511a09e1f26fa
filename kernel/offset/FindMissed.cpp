#include "kernel/offset/FindMissed.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "kernel/common/Workers.h"

namespace kernel {
namespace {

constexpr std::size_t kChunk = 4096;
// The way up ends at a ridge of the distance at the latest, mostly after few steps.
constexpr int kMostSteps = 24;
constexpr int kStepsUp = 8;
// Of the radius: closer to the exact surface than that is on it.
constexpr double kClose = 1e-3;
// Of the tolerance: points that the mesh comes nearer to stay covered when it is mended beside
// them.
constexpr double kUncovered = 0.2;

// Facets of a mesh to measure distances from.
class ResultTree {
 public:
  ResultTree(const HalfEdgeMesh& mesh, std::vector<HalfEdgeMesh::Index> facets,
             const std::function<void(double)>& watch)
      : m_facets(std::move(facets)) {
    if (m_facets.empty()) return;
    StockMesh stock;
    stock.vertices.reserve(3 * m_facets.size());
    stock.facets.reserve(m_facets.size());
    for (const HalfEdgeMesh::Index facet : m_facets) {
      const auto first = static_cast<std::uint32_t>(stock.vertices.size());
      for (HalfEdgeMesh::Index half = 3 * facet; half < 3 * facet + 3; ++half) {
        stock.vertices.push_back(mesh.At(mesh.Origin(half)));
      }
      stock.facets.push_back({{first, first + 1, first + 2}, 0});
    }
    m_tree.emplace(stock, watch);
  }

  // `guess`: where the last search ended, 0 at first.
  UncoveredPoint Nearest(const Vec3& point, std::uint32_t& guess) const {
    if (!m_tree) return {point, std::numeric_limits<double>::infinity(), HalfEdgeMesh::kNone};
    const StockTree::Nearest nearest = m_tree->FindNearest(point, guess);
    guess = nearest.slot;
    return {point, std::sqrt(nearest.square), m_facets[m_tree->FacetOf(nearest.slot)]};
  }

 private:
  std::vector<HalfEdgeMesh::Index> m_facets;
  std::optional<StockTree> m_tree;
};

class Search {
 public:
  Search(const OffsetField& field, const ResultTree& result, const MissedLimits& limits)
      : m_field(field), m_result(result), m_tolerance(limits.tolerance), m_limit(limits.distance) {}

  // Above the centre of a facet and those of its corners that are `due`. An exact surface that is
  // made of planes is furthest from a mesh above corners.
  void LookAbove(std::uint32_t slot, const std::array<bool, 3>& due) {
    const Corners& corners = m_field.CornersOf(slot);
    const Vec3 centre = (corners[0] + corners[1] + corners[2]) / 3;
    for (const Vec3& normal : m_field.SideNormals(slot)) {
      LookAbove(centre, normal, slot);
      for (std::size_t i = 0; i < 3; ++i) {
        if (due[i]) LookAbove(corners[i], normal, slot);
      }
    }
  }

  const Missed& Found() const { return m_missed; }

 private:
  void LookAbove(const Vec3& foot, const Vec3& normal, std::uint32_t slot) {
    const Vec3 point = foot + normal * m_field.Radius();
    if (m_field.At(point, slot).distance <= kClose * m_field.Radius()) {
      Count(point, slot);
      return;
    }
    // Another body covers it. Up from the foot, so that no other facet is passed on the way.
    const std::optional<Vec3> end = WayUp(foot + normal * (2 * kClose * m_field.Radius()), slot);
    if (end) Count(*end, slot);
  }

  // The distance from the mesh grows by no more than the step, so the walk never goes too far; no
  // step is as long as the distance, so it never comes to the other side.
  std::optional<Vec3> WayUp(Vec3 point, std::uint32_t slot) const {
    for (int step = 0; step < kMostSteps; ++step) {
      const OffsetField::Off off = m_field.At(point, slot);
      slot = off.slot;
      const double least = kClose * m_field.Radius();
      if (off.distance <= least) return point;
      const double distance = m_field.Radius() - off.distance;
      if (distance < least) return std::nullopt;
      point += m_field.SlopeOf(slot, point).gradient * std::min(off.distance, 0.9 * distance);
    }
    return std::nullopt;
  }

  // A wall of no thickness to speak of need not be there. From its corner the way to its middle
  // turns with each facet that is nearest.
  bool IsThick(Vec3 point, std::uint32_t slot) const {
    for (int step = 0; step < kStepsUp; ++step) {
      const OffsetField::Off off = m_field.At(point, slot);
      if (off.distance < -m_tolerance / 2) return true;
      slot = off.slot;
      point += m_field.SlopeOf(slot, point).gradient * m_tolerance;
    }
    return false;
  }

  void Count(const Vec3& point, std::uint32_t slot) {
    const UncoveredPoint nearest = m_result.Nearest(point, m_guess);
    if (nearest.distance > m_limit) {
      if (IsThick(point, slot)) ++m_missed.points;
    } else if (nearest.distance > kUncovered * m_tolerance) {
      m_missed.uncovered.push_back(nearest);
    }
  }

  const OffsetField& m_field;
  const ResultTree& m_result;
  double m_tolerance, m_limit;
  std::uint32_t m_guess = 0;
  Missed m_missed;
};

// By slot: which corners no slot before has.
std::vector<std::array<bool, 3>> FirstCorners(const OffsetMakers& makers) {
  std::vector<std::array<bool, 3>> first(makers.Field().SlotCount());
  std::vector<bool> isKnown(makers.Mesh().vertices.size(), false);
  for (std::size_t slot = 0; slot < first.size(); ++slot) {
    const std::uint32_t facet = makers.Field().FacetOf(static_cast<std::uint32_t>(slot));
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint32_t vertex = makers.Mesh().facets[facet].vertices[i];
      first[slot][i] = !isKnown[vertex];
      isKnown[vertex] = true;
    }
  }
  return first;
}

}  // namespace

Missed FindMissed(const OffsetMakers& makers, const HalfEdgeMesh& result,
                  const MissedLimits& limits, const std::function<void(double)>& watch) {
  const ResultTree tree(result, result.LiveFacets(), [&](double share) { watch(share / 2); });
  const OffsetField& field = makers.Field();
  const std::vector<std::array<bool, 3>> due = FirstCorners(makers);
  const std::size_t count = (field.SlotCount() + kChunk - 1) / kChunk;
  std::vector<Missed> found(count);
  RunTasks(
      count,
      [&](std::size_t chunk) {
        Search search(field, tree, limits);
        const std::size_t end = std::min(field.SlotCount(), (chunk + 1) * kChunk);
        for (std::size_t slot = chunk * kChunk; slot < end; ++slot) {
          search.LookAbove(static_cast<std::uint32_t>(slot), due[slot]);
        }
        found[chunk] = search.Found();
      },
      [&](std::size_t done) {
        watch(0.5 + 0.5 * static_cast<double>(done) / static_cast<double>(count));
      });
  Missed all;
  for (const Missed& some : found) {
    all.points += some.points;
    all.uncovered.insert(all.uncovered.end(), some.uncovered.begin(), some.uncovered.end());
  }
  return all;
}

std::vector<UncoveredPoint> StillUncovered(const HalfEdgeMesh& mesh,
                                           const std::vector<HalfEdgeMesh::Index>& facets,
                                           const std::vector<UncoveredPoint>& points,
                                           double limit) {
  const ResultTree tree(mesh, facets, [](double) {});
  std::vector<UncoveredPoint> left;
  std::uint32_t guess = 0;
  for (const UncoveredPoint& point : points) {
    const UncoveredPoint nearest = tree.Nearest(point.at, guess);
    if (nearest.distance > limit) left.push_back(nearest);
  }
  return left;
}

}  // namespace kernel
