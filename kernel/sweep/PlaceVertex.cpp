#include "kernel/sweep/PlaceVertex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "kernel/sweep/PlaneMeeting.h"

namespace kernel {
namespace {

// Planes that turn by less than about 0.06 count as one: the edge between them is flatter than the
// tolerance over a ray spacing.
constexpr double kSamePlane = 0.9982;
// How far outside its cell a vertex may lie, as a share of the cell: a right-angled ridge between
// two rays reaches half a spacing beyond them.
constexpr double kReach = 0.55;
constexpr int kMostSteps = 8;
constexpr std::size_t kMostPieces = 6;

// Tangent planes that count as one.
struct Piece {
  TangentPlane plane;
  int crossings = 0;
  bool ofStock = false;
  double outside = 0;  // of the vertex, before the plane
};

class Placement {
 public:
  Placement(std::span<const SurfaceCrossing> crossings, const Box3& cell,
            const SurfaceMakers& makers)
      : m_crossings(crossings),
        m_makers(makers),
        m_size(cell.high.x - cell.low.x),
        m_reach(cell.Grown(kReach * m_size)) {
    for (const SurfaceCrossing& crossing : crossings) m_centroid += crossing.tangent.point;
    m_centroid = m_centroid / static_cast<double>(crossings.size());
  }

  Vec3 Find() {
    if (IsFlat()) return m_centroid;
    m_point = m_centroid;
    CollectPieces();
    for (std::size_t planes = std::min<std::size_t>(3, m_pieceCount); planes >= 1; --planes) {
      if (TryWith(planes)) return m_point;
    }
    return m_centroid;
  }

 private:
  bool IsFlat() const {
    const Vec3& normal = m_crossings.front().tangent.normal;
    return std::all_of(m_crossings.begin(), m_crossings.end(), [&](const SurfaceCrossing& c) {
      return LengthSquared(c.tangent.normal - normal) < 1e-28 &&
             std::abs(Dot(normal, c.tangent.point - m_centroid)) < 1e-14 * m_size;
    });
  }

  // Up to `planes` pieces are met. False when the way there leaves the reach.
  bool TryWith(std::size_t planes) {
    m_point = m_centroid;
    for (int step = 0; step < kMostSteps; ++step) {
      CollectPieces();
      const Vec3 before = m_point;
      if (!MeetBest(std::min(planes, m_pieceCount))) return false;
      if (LengthSquared(m_point - before) < 1e-26 * m_size * m_size) break;
    }
    return true;
  }

  void CollectPieces() {
    m_pieceCount = 0;
    for (const SurfaceCrossing& crossing : m_crossings) {
      const TangentPlane plane = m_makers.TangentTowards(crossing.maker, crossing.tangent, m_point);
      AddToPieces(plane, !crossing.maker.IsMove());
    }
    // The stock's planes first: they must stay planes. Then what most crossings see.
    std::stable_sort(m_pieces.begin(), m_pieces.begin() + static_cast<std::ptrdiff_t>(m_pieceCount),
                     [](const Piece& a, const Piece& b) {
                       if (a.ofStock != b.ofStock) return a.ofStock;
                       return a.crossings > b.crossings;
                     });
    m_pieceCount = std::min(m_pieceCount, kMostPieces);
  }

  void AddToPieces(const TangentPlane& plane, bool ofStock) {
    const double outside = Dot(plane.normal, m_point - plane.point);
    for (std::size_t i = 0; i < m_pieceCount; ++i) {
      Piece& piece = m_pieces[i];
      if (piece.ofStock != ofStock || Dot(piece.plane.normal, plane.normal) < kSamePlane) continue;
      ++piece.crossings;
      // What is left of the stock lies outside every tool: the outermost plane is the surface.
      if (outside > piece.outside) {
        piece.plane = plane;
        piece.outside = outside;
      }
      return;
    }
    m_pieces[m_pieceCount++] = {plane, 1, ofStock, outside};
  }

  // Goes to the meeting of `count` pieces that suits the others best.
  bool MeetBest(std::size_t count) {
    std::array<std::size_t, 3> chosen{};
    double least = std::numeric_limits<double>::infinity();
    Vec3 best;
    for (chosen[0] = 0; chosen[0] < m_pieceCount; ++chosen[0]) {
      if (count == 1) {
        Consider(chosen, 1, least, best);
        continue;
      }
      for (chosen[1] = chosen[0] + 1; chosen[1] < m_pieceCount; ++chosen[1]) {
        if (count == 2) {
          Consider(chosen, 2, least, best);
          continue;
        }
        for (chosen[2] = chosen[1] + 1; chosen[2] < m_pieceCount; ++chosen[2]) {
          Consider(chosen, 3, least, best);
        }
      }
    }
    if (!std::isfinite(least)) return false;
    m_point = best;
    return true;
  }

  void Consider(const std::array<std::size_t, 3>& chosen, std::size_t count, double& least,
                Vec3& best) const {
    std::array<TangentPlane, 3> planes;
    for (std::size_t i = 0; i < count; ++i) planes[i] = m_pieces[chosen[i]].plane;
    const std::optional<Vec3> met = MeetPlanes({planes.data(), count}, m_point);
    if (!met || !m_reach.Contains(*met)) return;
    const double misfit = Misfit(chosen, count, *met);
    if (misfit < least) {
      least = misfit;
      best = *met;
    }
  }

  // The greatest distance from a piece that is not met; leaving a plane of the stock counts worst.
  double Misfit(const std::array<std::size_t, 3>& chosen, std::size_t count,
                const Vec3& point) const {
    double worst = 0;
    for (std::size_t i = 0; i < m_pieceCount; ++i) {
      if (std::find(chosen.begin(), chosen.begin() + static_cast<std::ptrdiff_t>(count), i) !=
          chosen.begin() + static_cast<std::ptrdiff_t>(count)) {
        continue;
      }
      const TangentPlane& plane = m_pieces[i].plane;
      const double distance = std::abs(Dot(plane.normal, point - plane.point));
      worst = std::max(worst, m_pieces[i].ofStock ? 10 * distance + m_size : distance);
    }
    return worst;
  }

  std::span<const SurfaceCrossing> m_crossings;
  const SurfaceMakers& m_makers;
  double m_size;
  Box3 m_reach;
  Vec3 m_centroid, m_point;
  std::array<Piece, 12> m_pieces;
  std::size_t m_pieceCount = 0;
};

}  // namespace

Vec3 PlaceVertex(std::span<const SurfaceCrossing> crossings, const Box3& cell,
                 const SurfaceMakers& makers) {
  return Placement(crossings, cell, makers).Find();
}

}  // namespace kernel
