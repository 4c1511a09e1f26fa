#include "kernel/sweep/BlockGrid.h"

#include <algorithm>
#include <cmath>

namespace kernel {
namespace {

constexpr int kCellsASide = 8;
constexpr double kMarginInCells = 2;

}  // namespace

BlockGrid::BlockGrid(const DexelLattice& lattice, const std::vector<Vec3>& points)
    : m_origin(lattice.Node(0, 0, 0)),
      m_side(kCellsASide * lattice.Spacing()),
      m_margin(kMarginInCells * lattice.Spacing()) {
  for (int axis = 0; axis < 3; ++axis) {
    m_counts[static_cast<std::size_t>(axis)] = (lattice.Nodes(axis) - 1) / kCellsASide + 1;
  }
  NumberBlocks(points);
}

std::uint32_t BlockGrid::BlockAt(const Vec3& point) const {
  return m_number[Index(Along(0, point.x), Along(1, point.y), Along(2, point.z))];
}

int BlockGrid::Along(int axis, double coordinate) const {
  const double at = std::floor((coordinate - m_origin[axis]) / m_side);
  const int last = m_counts[static_cast<std::size_t>(axis)] - 1;
  return static_cast<int>(std::clamp(at, 0.0, static_cast<double>(last)));
}

void BlockGrid::NumberBlocks(const std::vector<Vec3>& points) {
  m_number.assign(Index(0, 0, m_counts[2]), kNone);
  for (const Vec3& point : points) {
    ForEachCube(Box3{point, point}.Grown(m_margin), [&](std::size_t cube) { m_number[cube] = 0; });
  }
  std::uint32_t count = 0;
  for (int k = 0; k < m_counts[2]; ++k) {
    for (int j = 0; j < m_counts[1]; ++j) {
      for (int i = 0; i < m_counts[0]; ++i) {
        std::uint32_t& number = m_number[Index(i, j, k)];
        if (number == kNone) continue;
        number = count++;
        const Vec3 low = m_origin + m_side * Vec3{static_cast<double>(i), static_cast<double>(j),
                                                  static_cast<double>(k)};
        m_boxes.push_back(Box3{low, low + Vec3{m_side, m_side, m_side}}.Grown(m_margin));
      }
    }
  }
}

}  // namespace kernel
