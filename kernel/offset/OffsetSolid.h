#pragma once

#include "kernel/offset/OffsetMakers.h"
#include "kernel/sweep/BlockGrid.h"
#include "kernel/sweep/ExactSolid.h"

namespace kernel {

// What a field leaves, as the solid that a mesh is settled on. Keeps a reference to the makers.
class OffsetSolid final : public ExactSolid {
 public:
  // Near all of `points`.
  OffsetSolid(const OffsetMakers& makers, const DexelLattice& lattice,
              const std::vector<Vec3>& points)
      : m_makers(makers), m_grid(lattice, points) {}

  const SurfaceMakers& Makers() const override { return m_makers; }
  std::size_t BlockCount() const override { return m_grid.Count(); }
  std::uint32_t BlockAt(const Vec3& point) const override { return m_grid.BlockAt(point); }
  std::unique_ptr<SolidInBlock> InBlock(std::uint32_t block) const override;

 private:
  const OffsetMakers& m_makers;
  BlockGrid m_grid;
};

}  // namespace kernel
