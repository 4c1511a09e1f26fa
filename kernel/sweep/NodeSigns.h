#pragma once

#include <cstdint>
#include <vector>

#include "kernel/sweep/DexelModel.h"

namespace kernel {

// Which nodes of a lattice are solid, a bit each, in columns along z.
class NodeSigns {
 public:
  // None is.
  explicit NodeSigns(const DexelLattice& lattice);

  int Nodes(int axis) const { return m_nodes[static_cast<std::size_t>(axis)]; }
  std::size_t WordCount() const { return m_words; }  // a column

  // Of the nodes (i, j, 64 word) to (i, j, 64 word + 63), the lowest bit first.
  std::uint64_t Word(int i, int j, std::size_t word) const { return m_bits[Column(i, j) + word]; }
  bool IsSolid(int i, int j, int k) const {
    return (m_bits[Column(i, j) + static_cast<std::size_t>(k / 64)] >> (k % 64) & 1U) != 0;
  }
  // From node k to node end - 1 of a column. Different columns may be marked on several threads.
  void MarkSolid(int i, int j, int k, int end);

 private:
  std::size_t Column(int i, int j) const {
    return (static_cast<std::size_t>(j) * static_cast<std::size_t>(m_nodes[0]) +
            static_cast<std::size_t>(i)) *
           m_words;
  }

  std::array<int, 3> m_nodes;
  std::size_t m_words;
  std::vector<std::uint64_t> m_bits;
};

// As the rays along z say.
NodeSigns SignsOf(const DexelModel& model);

}  // namespace kernel
