#include "kernel/sweep/PlaceVertex.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "kernel/common/SymmetricEigen.h"

namespace kernel {
namespace {

// Pieces that meet at less than about 0.055 radians count as one: the edge between them is flatter
// than the tolerance over a ray spacing.
constexpr double kRankThreshold = 6e-4;
// How far outside its cell a vertex may lie, as a share of the cell: a right-angled ridge between
// two rays reaches half a spacing beyond them.
constexpr double kReach = 0.55;
constexpr int kMostSteps = 6;

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
    for (int rank = 3; rank >= 1; --rank) {
      if (TryRank(rank)) return m_point;
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

  bool TryRank(int mostRank) {
    m_point = m_centroid;
    for (std::size_t i = 0; i < m_crossings.size(); ++i) m_planes[i] = m_crossings[i].tangent;
    for (int step = 0; step < kMostSteps; ++step) {
      for (std::size_t i = 0; i < m_crossings.size(); ++i) {
        m_planes[i] =
            m_makers.TangentTowards(m_crossings[i].maker, m_crossings[i].tangent, m_point);
      }
      const Vec3 move = Step(mostRank);
      m_point += move;
      if (!m_reach.Contains(m_point)) return false;
      if (LengthSquared(move) < 1e-24 * m_size * m_size) break;
    }
    return true;
  }

  // The shortest step to where the planes meet, along the strongest `mostRank` directions at most.
  Vec3 Step(int mostRank) const {
    SymmetricMatrix a{};
    Vec3 b;
    for (std::size_t i = 0; i < m_crossings.size(); ++i) {
      const Vec3& n = m_planes[i].normal;
      a[0] += n.x * n.x;
      a[1] += n.x * n.y;
      a[2] += n.x * n.z;
      a[3] += n.y * n.y;
      a[4] += n.y * n.z;
      a[5] += n.z * n.z;
      b += n * Dot(n, m_planes[i].point - m_point);
    }
    const std::array<EigenPair, 3> pairs = SymmetricEigen(a);
    Vec3 step;
    for (int r = 0; r < mostRank; ++r) {
      const EigenPair& pair = pairs[static_cast<std::size_t>(r)];
      if (pair.value < kRankThreshold * pairs[0].value) break;
      step += pair.direction * (Dot(pair.direction, b) / pair.value);
    }
    return step;
  }

  std::span<const SurfaceCrossing> m_crossings;
  const SurfaceMakers& m_makers;
  double m_size;
  Box3 m_reach;
  Vec3 m_centroid, m_point;
  std::array<TangentPlane, 12> m_planes;
};

}  // namespace

Vec3 PlaceVertex(std::span<const SurfaceCrossing> crossings, const Box3& cell,
                 const SurfaceMakers& makers) {
  return Placement(crossings, cell, makers).Find();
}

}  // namespace kernel
