#include "kernel/sweep/SurfaceCells.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace kernel {

SurfaceCells::SurfaceCells(NodeSigns signs)
    : m_signs(std::move(signs)),
      m_columnsI(m_signs.Nodes(0)),
      m_columnsJ(m_signs.Nodes(1)),
      m_layers(m_signs.Nodes(2)),
      m_words(m_signs.WordCount()) {
  MarkCells();
}

bool SurfaceCells::HasSurface(int i, int j, int k) const {
  if (i < 0 || j < 0 || k < 0 || i >= m_columnsI || j >= m_columnsJ || k >= m_layers) return false;
  const std::size_t word = Column(i, j) + static_cast<std::size_t>(k / 64);
  return (m_active[word] >> (k % 64) & 1U) != 0;
}

std::size_t SurfaceCells::NumberOf(int i, int j, int k) const {
  const std::size_t word = Column(i, j) + static_cast<std::size_t>(k / 64);
  const std::uint64_t below = m_active[word] & ((std::uint64_t{1} << (k % 64)) - 1);
  return m_before[word] + static_cast<std::size_t>(std::popcount(below));
}

unsigned SurfaceCells::SignsOf(const Cell& cell) const {
  unsigned signs = 0;
  for (int corner = 0; corner < 8; ++corner) {
    const bool solid =
        m_signs.IsSolid(cell.i + (corner & 1), cell.j + (corner >> 1 & 1), cell.k + (corner >> 2));
    signs |= (solid ? 1U : 0U) << corner;
  }
  return signs;
}

void SurfaceCells::MarkCells() {
  const std::size_t words =
      m_words * static_cast<std::size_t>(m_columnsI) * static_cast<std::size_t>(m_columnsJ);
  m_active.assign(words, 0);
  m_before.assign(words, 0);
  std::size_t count = 0;
  for (int j = 0; j < m_columnsJ; ++j) {
    for (int i = 0; i < m_columnsI; ++i) {
      const bool hasCells = i + 1 < m_columnsI && j + 1 < m_columnsJ;
      for (std::size_t w = 0; w < m_words; ++w) {
        const std::size_t word = Column(i, j) + w;
        m_before[word] = static_cast<std::uint32_t>(count);
        if (!hasCells) continue;
        std::uint64_t any = 0;
        std::uint64_t all = ~std::uint64_t{0};
        for (int corner = 0; corner < 4; ++corner) {
          const int ci = i + (corner & 1);
          const int cj = j + (corner >> 1);
          const std::uint64_t low = m_signs.Word(ci, cj, w);
          const std::uint64_t next = w + 1 < m_words ? m_signs.Word(ci, cj, w + 1) : 0;
          const std::uint64_t high = low >> 1 | next << 63;
          any |= low | high;
          all &= low & high;
        }
        // The last node of a column has no cell above it.
        const int cellsLeft = m_layers - 1 - static_cast<int>(64 * w);
        const std::uint64_t within =
            cellsLeft < 64 ? (std::uint64_t{1} << std::max(cellsLeft, 0)) - 1 : ~std::uint64_t{0};
        std::uint64_t active = any & ~all & within;
        m_active[word] = active;
        for (; active != 0; active &= active - 1) {
          m_cells.push_back({i, j, static_cast<int>(64 * w) + std::countr_zero(active)});
          ++count;
        }
      }
    }
  }
}

}  // namespace kernel
