#include "kernel/sweep/SurfaceCells.h"

#include <bit>

namespace kernel {

SurfaceCells::SurfaceCells(const DexelModel& model)
    : m_columnsI(model.Lattice().Nodes(0)),
      m_columnsJ(model.Lattice().Nodes(1)),
      m_layers(model.Lattice().Nodes(2)),
      m_words(static_cast<std::size_t>((m_layers + 63) / 64)) {
  MarkNodes(model);
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
    signs |= BitAt(cell.i + (corner & 1), cell.j + (corner >> 1 & 1), cell.k + (corner >> 2))
             << corner;
  }
  return signs;
}

void SurfaceCells::MarkNodes(const DexelModel& model) {
  m_solid.assign(m_words * model.Lattice().RayCount(2), 0);
  for (int j = 0; j < m_columnsJ; ++j) {
    for (int i = 0; i < m_columnsI; ++i) {
      std::uint64_t* column = &m_solid[Column(i, j)];
      for (const SolidInterval& solid : model.Ray(2, i, j)) {
        const int end = model.Lattice().FirstNodeFrom(2, solid.high);
        for (int k = model.Lattice().FirstNodeFrom(2, solid.low); k < end; ++k) {
          column[k / 64] |= std::uint64_t{1} << (k % 64);
        }
      }
    }
  }
}

void SurfaceCells::MarkCells() {
  m_active.assign(m_solid.size(), 0);
  m_before.assign(m_solid.size(), 0);
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
        for (const std::size_t column :
             {Column(i, j), Column(i + 1, j), Column(i, j + 1), Column(i + 1, j + 1)}) {
          const std::uint64_t low = m_solid[column + w];
          const std::uint64_t next = w + 1 < m_words ? m_solid[column + w + 1] : 0;
          const std::uint64_t high = low >> 1 | next << 63;
          any |= low | high;
          all &= low & high;
        }
        std::uint64_t active = any & ~all;
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
