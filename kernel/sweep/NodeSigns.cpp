#include "kernel/sweep/NodeSigns.h"

#include <algorithm>

namespace kernel {

NodeSigns::NodeSigns(const DexelLattice& lattice)
    : m_nodes{lattice.Nodes(0), lattice.Nodes(1), lattice.Nodes(2)},
      m_words(static_cast<std::size_t>((m_nodes[2] + 63) / 64)),
      m_bits(m_words * lattice.RayCount(2), 0) {}

void NodeSigns::MarkSolid(int i, int j, int k, int end) {
  std::uint64_t* column = &m_bits[Column(i, j)];
  while (k < end) {
    const int next = std::min(end, (k / 64 + 1) * 64);
    const std::uint64_t from = ~std::uint64_t{0} << (k % 64);
    const std::uint64_t to = next % 64 == 0 ? ~std::uint64_t{0} : ~(~std::uint64_t{0} << next % 64);
    column[k / 64] |= from & to;
    k = next;
  }
}

NodeSigns SignsOf(const DexelModel& model) {
  const DexelLattice& lattice = model.Lattice();
  NodeSigns signs(lattice);
  for (int j = 0; j < lattice.Nodes(1); ++j) {
    for (int i = 0; i < lattice.Nodes(0); ++i) {
      for (const SolidInterval& solid : model.Ray(2, i, j)) {
        signs.MarkSolid(i, j, lattice.FirstNodeFrom(2, solid.low),
                        lattice.FirstNodeFrom(2, solid.high));
      }
    }
  }
  return signs;
}

}  // namespace kernel
