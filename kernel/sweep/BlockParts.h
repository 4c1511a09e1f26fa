#pragma once

#include <array>
#include <memory>

#include "kernel/sweep/LocalCut.h"

namespace kernel {

// What a cut leaves in a block, and in the parts of it that are asked for, whose lists of what is
// near are shorter.
class BlockParts {
 public:
  // `moves` and `facets`: at least those that come into `box`, in ascending order. `inner`: the box
  // that is parted; what lies outside is seen to by the whole block's solid.
  BlockParts(const CutMakers& makers, std::span<const std::uint32_t> moves,
             std::span<const std::uint32_t> facets, const Box3& box, const Box3& inner);

  // Good all over the block and for a margin around it.
  const LocalSolid& Whole() const { return m_whole; }
  // At a point and right beside it; faster.
  const LocalSolid& At(const Vec3& point);

 private:
  static constexpr int kASide = 4;

  LocalCut m_whole;
  Vec3 m_low;
  double m_side;
  std::array<std::unique_ptr<LocalCut>, kASide * kASide * kASide> m_parts;
};

}  // namespace kernel
