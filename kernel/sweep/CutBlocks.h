#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "kernel/sweep/BlockGrid.h"
#include "kernel/sweep/BlockParts.h"

namespace kernel {

// What is left of a stock, by blocks, each with the moves and stock facets that come near it. Keeps
// a reference to the makers. May be asked on several threads.
class CutBlocks {
 public:
  // Blocks for all points within two ray spacings of `points`. Runs on all threads.
  CutBlocks(const DexelLattice& lattice, const Box3& stockBox, const CutMakers& makers,
            const std::vector<Vec3>& points);

  const SurfaceMakers& Makers() const { return m_makers; }
  const BlockGrid& Grid() const { return m_grid; }
  // The exact solid in a block, for one thread.
  std::unique_ptr<BlockParts> InBlock(std::uint32_t block) const;

 private:
  struct Lists {
    std::vector<std::size_t> begin;
    std::vector<std::uint32_t> items;  // in ascending order for each block

    std::span<const std::uint32_t> At(std::uint32_t block) const {
      return {items.data() + begin[block], begin[block + 1] - begin[block]};
    }
  };

  Lists Bin(const std::vector<Box3>& boxes) const;

  const CutMakers& m_makers;
  BlockGrid m_grid;
  Lists m_moves, m_facets;
};

}  // namespace kernel
