#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kernel/sweep/DexelLattice.h"

namespace kernel {

// Cubes of cells near the surface, numbered.
class BlockGrid {
 public:
  // Blocks for all points within two ray spacings of `points`.
  BlockGrid(const DexelLattice& lattice, const std::vector<Vec3>& points);

  static constexpr std::uint32_t kNone = UINT32_MAX;

  std::size_t Count() const { return m_boxes.size(); }
  // kNone far from the surface.
  std::uint32_t BlockAt(const Vec3& point) const;
  // The block, grown by Margin() on all sides.
  const Box3& BoxOf(std::uint32_t block) const { return m_boxes[block]; }
  double Margin() const { return m_margin; }

  // Calls visit(block) for each block that comes within the margin of the box.
  template <class Visit>
  void ForEachNear(const Box3& box, const Visit& visit) const {
    ForEachCube(box.Grown(m_margin), [&](std::size_t cube) {
      if (m_number[cube] != kNone) visit(m_number[cube]);
    });
  }

 private:
  int Along(int axis, double coordinate) const;
  std::size_t Index(int i, int j, int k) const {
    return (static_cast<std::size_t>(k) * static_cast<std::size_t>(m_counts[1]) +
            static_cast<std::size_t>(j)) *
               static_cast<std::size_t>(m_counts[0]) +
           static_cast<std::size_t>(i);
  }
  void NumberBlocks(const std::vector<Vec3>& points);

  template <class Visit>
  void ForEachCube(const Box3& box, const Visit& visit) const {
    if (box.IsEmpty()) return;
    for (int k = Along(2, box.low.z); k <= Along(2, box.high.z); ++k) {
      for (int j = Along(1, box.low.y); j <= Along(1, box.high.y); ++j) {
        const std::size_t row = Index(0, j, k);
        const int end = Along(0, box.high.x);
        for (int i = Along(0, box.low.x); i <= end; ++i) visit(row + static_cast<std::size_t>(i));
      }
    }
  }

  Vec3 m_origin;
  double m_side, m_margin;
  std::array<int, 3> m_counts{};
  std::vector<std::uint32_t> m_number;  // of each cube, kNone without a surface
  std::vector<Box3> m_boxes;
};

}  // namespace kernel
