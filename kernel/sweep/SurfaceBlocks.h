#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kernel/sweep/DexelLattice.h"
#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// Cubes of cells near the surface, each with the moves and stock facets that come near it.
class SurfaceBlocks {
 public:
  // Blocks for all points within two ray spacings of `points`. Runs on all threads.
  SurfaceBlocks(const DexelLattice& lattice, const Box3& stockBox, const SurfaceMakers& makers,
                const std::vector<Vec3>& points);

  static constexpr std::uint32_t kNone = UINT32_MAX;

  std::size_t Count() const { return m_boxes.size(); }
  // kNone far from the surface.
  std::uint32_t BlockAt(const Vec3& point) const;
  // The block, grown by Margin() on all sides.
  const Box3& BoxOf(std::uint32_t block) const { return m_boxes[block]; }
  double Margin() const { return m_margin; }
  // In ascending order.
  std::span<const std::uint32_t> MovesAt(std::uint32_t block) const { return m_moves.At(block); }
  std::span<const std::uint32_t> FacetsAt(std::uint32_t block) const { return m_facets.At(block); }

 private:
  struct Lists {
    std::vector<std::size_t> begin;
    std::vector<std::uint32_t> items;

    std::span<const std::uint32_t> At(std::uint32_t block) const {
      return {items.data() + begin[block], begin[block + 1] - begin[block]};
    }
  };

  struct Range {
    int low[3], high[3];  // high included
  };

  int Along(int axis, double coordinate) const;
  Range RangeOf(const Box3& box) const;
  std::size_t Index(int i, int j, int k) const {
    return (static_cast<std::size_t>(k) * static_cast<std::size_t>(m_counts[1]) +
            static_cast<std::size_t>(j)) *
               static_cast<std::size_t>(m_counts[0]) +
           static_cast<std::size_t>(i);
  }
  template <class Visit>
  void ForEachBlock(const Box3& box, const Visit& visit) const;
  Lists Bin(const std::vector<Box3>& boxes) const;
  void NumberBlocks(const std::vector<Vec3>& points);

  Vec3 m_origin;
  double m_side, m_margin;
  std::array<int, 3> m_counts;
  std::vector<std::uint32_t> m_number;  // of each cube, kNone without a surface
  std::vector<Box3> m_boxes;
  Lists m_moves, m_facets;
};

}  // namespace kernel
