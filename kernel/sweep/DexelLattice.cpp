#include "kernel/sweep/DexelLattice.h"

#include <algorithm>
#include <cmath>

#include "kernel/common/FatalError.h"

namespace kernel {

DexelLattice::DexelLattice(const Box3& box, double spacing) : m_spacing(spacing), m_nodes{} {
  constexpr std::array<double, 3> kShift = {0.3819660112501051, 0.4142135623730951,
                                            0.3660254037844386};
  constexpr double kMostNodes = 1 << 20;
  for (int axis = 0; axis < 3; ++axis) {
    const double shift = kShift[static_cast<std::size_t>(axis)];
    m_origin[axis] = box.low[axis] - shift * spacing;
    const double steps = std::floor((box.high[axis] - m_origin[axis]) / spacing) + 2;
    if (!(steps < kMostNodes)) throw FatalError("Memory limit reached.");
    m_nodes[static_cast<std::size_t>(axis)] = static_cast<int>(steps);
    // Far from zero a spacing near the last place could round the last node back into the box.
    if (Coordinate(axis, 0) >= box.low[axis] ||
        Coordinate(axis, Nodes(axis) - 1) <= box.high[axis]) {
      throw FatalError("the tolerance is too fine for coordinates as large as the stock's");
    }
  }
}

int DexelLattice::FirstNodeFrom(int axis, double coordinate) const {
  const double steps = (coordinate - m_origin[axis]) / m_spacing;
  const int count = Nodes(axis);
  if (!(steps > 0)) return 0;
  if (steps > count) return count;
  int node = static_cast<int>(steps);
  while (node > 0 && Coordinate(axis, node - 1) >= coordinate) --node;
  while (node < count && Coordinate(axis, node) < coordinate) ++node;
  return node;
}

}  // namespace kernel
