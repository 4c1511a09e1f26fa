#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kernel/sweep/BlockGrid.h"
#include "kernel/sweep/CutMakers.h"
#include "kernel/sweep/ExactSolid.h"

namespace kernel {

// What is left of a stock, by blocks, each with the moves and stock facets that come near it. Keeps
// a reference to the makers.
class CutBlocks final : public ExactSolid {
 public:
  // Blocks for all points within two ray spacings of `points`. Runs on all threads.
  CutBlocks(const DexelLattice& lattice, const Box3& stockBox, const CutMakers& makers,
            const std::vector<Vec3>& points);

  const SurfaceMakers& Makers() const override { return m_makers; }
  std::size_t BlockCount() const override { return m_grid.Count(); }
  std::uint32_t BlockAt(const Vec3& point) const override { return m_grid.BlockAt(point); }
  std::unique_ptr<SolidInBlock> InBlock(std::uint32_t block) const override;

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
