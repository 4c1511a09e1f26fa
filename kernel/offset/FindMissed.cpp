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

StockMesh AsStock(const HalfEdgeMesh& mesh) {
  StockMesh stock;
  stock.vertices.reserve(mesh.VertexCount());
  for (std::size_t i = 0; i < mesh.VertexCount(); ++i) {
    stock.vertices.push_back(mesh.At(static_cast<HalfEdgeMesh::Index>(i)));
  }
  for (const HalfEdgeMesh::Index facet : mesh.LiveFacets()) {
    stock.facets.push_back(
        {{mesh.Origin(3 * facet), mesh.Origin(3 * facet + 1), mesh.Origin(3 * facet + 2)},
         mesh.Colour(facet)});
  }
  return stock;
}

class Search {
 public:
  Search(const OffsetField& field, const StockTree* result, const MissedLimits& limits)
      : m_field(field), m_result(result), m_tolerance(limits.tolerance), m_limit(limits.distance) {}

  void LookAbove(std::uint32_t slot) {
    const Corners& corners = m_field.CornersOf(slot);
    const Vec3 centre = (corners[0] + corners[1] + corners[2]) / 3;
    for (const Vec3& normal : m_field.SideNormals(slot)) {
      const Vec3 point = centre + normal * m_field.Radius();
      if (m_field.At(point, slot).distance <= kClose * m_field.Radius()) {
        Count(point, slot);
        continue;
      }
      // Another body covers it. Up from the foot, so that no other facet is passed on the way.
      const std::optional<Vec3> end =
          WayUp(centre + normal * (2 * kClose * m_field.Radius()), slot);
      if (end) Count(*end, slot);
    }
  }

  const Missed& Found() const { return m_missed; }

 private:
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
    if (!IsThick(point, slot)) return;
    double distance = std::numeric_limits<double>::infinity();
    if (m_result != nullptr) {
      const StockTree::Nearest nearest = m_result->FindNearest(point, m_guess);
      m_guess = nearest.slot;
      distance = std::sqrt(nearest.square);
    }
    m_missed.farthest = std::max(m_missed.farthest, distance);
    if (distance > m_limit) ++m_missed.points;
  }

  const OffsetField& m_field;
  const StockTree* m_result;
  double m_tolerance, m_limit;
  std::uint32_t m_guess = 0;
  Missed m_missed;
};

}  // namespace

Missed FindMissed(const OffsetField& field, const HalfEdgeMesh& result, const MissedLimits& limits,
                  const std::function<void(double)>& watch) {
  std::optional<StockTree> tree;
  const StockMesh stock = AsStock(result);
  if (!stock.facets.empty()) {
    tree.emplace(stock, [&](double share) { watch(share / 2); });
  }
  const std::size_t count = (field.SlotCount() + kChunk - 1) / kChunk;
  std::vector<Missed> found(count);
  RunTasks(
      count,
      [&](std::size_t chunk) {
        Search search(field, tree ? &*tree : nullptr, limits);
        const std::size_t end = std::min(field.SlotCount(), (chunk + 1) * kChunk);
        for (std::size_t slot = chunk * kChunk; slot < end; ++slot) {
          search.LookAbove(static_cast<std::uint32_t>(slot));
        }
        found[chunk] = search.Found();
      },
      [&](std::size_t done) {
        watch(0.5 + 0.5 * static_cast<double>(done) / static_cast<double>(count));
      });
  Missed all;
  for (const Missed& some : found) {
    all.points += some.points;
    all.farthest = std::max(all.farthest, some.farthest);
  }
  return all;
}

}  // namespace kernel
