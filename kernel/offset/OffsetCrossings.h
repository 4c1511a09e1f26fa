#pragma once

#include <functional>
#include <vector>

#include "kernel/offset/OffsetField.h"
#include "kernel/sweep/LatticeCrossings.h"
#include "kernel/sweep/SurfaceCells.h"

namespace kernel {

// Where the surface of what a field leaves crosses the edges of a lattice: on the way from the node
// that is taken away, the last of the places at which one body ends and the next one does not go
// on. Exact but for rounding. Keeps references to lattice and cells.
class OffsetCrossings final : public LatticeCrossings {
 public:
  // `cells`: of the signs of NodesOf. Runs on all threads; `watch` hears the share that is done.
  OffsetCrossings(const OffsetField& field, const DexelLattice& lattice, const SurfaceCells& cells,
                  const std::function<void(double)>& watch);

  const DexelLattice& Lattice() const override { return m_lattice; }
  RayCrossing On(int axis, const std::array<int, 3>& node, bool leaving) const override;

 private:
  const DexelLattice& m_lattice;
  const SurfaceCells& m_cells;
  std::vector<RayCrossing> m_crossings;  // three a cell: on the edges out of its first node
};

}  // namespace kernel
