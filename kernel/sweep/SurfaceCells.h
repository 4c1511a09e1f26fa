#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kernel/sweep/NodeSigns.h"

namespace kernel {

// Which cells of the lattice the surface runs through: those whose corners are not all alike. Cell
// (i, j, k) reaches from node (i, j, k) to node (i + 1, j + 1, k + 1). Cells are numbered column by
// column, i first, then j, k innermost.
class SurfaceCells {
 public:
  explicit SurfaceCells(NodeSigns signs);

  struct Cell {
    int i, j, k;
    int operator[](int axis) const { return axis == 0 ? i : axis == 1 ? j : k; }
  };

  std::size_t Count() const { return m_cells.size(); }
  const Cell& At(std::size_t number) const { return m_cells[number]; }
  // Whether the surface runs through the cell; false beyond the lattice.
  bool HasSurface(int i, int j, int k) const;
  // The number of a cell that the surface runs through.
  std::size_t NumberOf(int i, int j, int k) const;
  // Bit c: corner c is solid (see CellTopology.h).
  unsigned SignsOf(const Cell& cell) const;

 private:
  std::size_t Column(int i, int j) const {
    return (static_cast<std::size_t>(j) * static_cast<std::size_t>(m_columnsI) +
            static_cast<std::size_t>(i)) *
           m_words;
  }
  void MarkCells();

  NodeSigns m_signs;
  int m_columnsI, m_columnsJ, m_layers;
  std::size_t m_words;                  // 64-bit words a column
  std::vector<std::uint64_t> m_active;  // cells
  std::vector<std::uint32_t> m_before;  // active cells before each word
  std::vector<Cell> m_cells;
};

}  // namespace kernel
