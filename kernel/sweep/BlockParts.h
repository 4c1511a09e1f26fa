#pragma once

#include <array>
#include <memory>

#include "kernel/sweep/LocalSolid.h"

namespace kernel {

// The exact solid in a block, and in the parts of it that are asked for, whose lists of what is
// near are shorter. Keeps a reference to the block's solid.
class BlockParts {
 public:
  // `inner`: the box that is parted; what lies outside is seen to by the whole block's solid.
  BlockParts(const LocalSolid& whole, const Box3& inner);

  const LocalSolid& At(const Vec3& point);

 private:
  static constexpr int kASide = 4;

  const LocalSolid& m_whole;
  Vec3 m_low;
  double m_side;
  std::array<std::unique_ptr<LocalSolid>, kASide * kASide * kASide> m_parts;
};

}  // namespace kernel
