#include "kernel/sweep/BlockParts.h"

#include <cmath>

namespace kernel {
namespace {

constexpr double kOverlap = 1e-6;  // of a part's side: rounding must not lose a point

}  // namespace

BlockParts::BlockParts(const CutMakers& makers, std::span<const std::uint32_t> moves,
                       std::span<const std::uint32_t> facets, const Box3& box, const Box3& inner)
    : m_whole(makers, moves, facets, box),
      m_low(inner.low),
      m_side((inner.high.x - inner.low.x) / kASide) {}

const LocalSolid& BlockParts::At(const Vec3& point) {
  Vec3 low = m_low;
  std::size_t number = 0;
  for (int axis = 0; axis < 3; ++axis) {
    const double along = std::floor((point[axis] - m_low[axis]) / m_side);
    if (!(along >= 0 && along < kASide)) return m_whole;
    low[axis] += along * m_side;
    number = number * kASide + static_cast<std::size_t>(along);
  }
  std::unique_ptr<LocalCut>& part = m_parts[number];
  if (!part) {
    const Box3 box{low, low + Vec3{m_side, m_side, m_side}};
    part = std::make_unique<LocalCut>(m_whole, box.Grown(kOverlap * m_side));
  }
  return *part;
}

}  // namespace kernel
