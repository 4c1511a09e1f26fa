#include "kernel/sweep/SurfaceBlocks.h"

#include <algorithm>
#include <cmath>

#include "kernel/sweep/MoveBoxes.h"

namespace kernel {
namespace {

constexpr int kCellsASide = 8;
constexpr double kMarginInCells = 2;

std::vector<Box3> BoxesOf(const StockMesh& mesh) {
  std::vector<Box3> boxes(mesh.facets.size());
  for (std::size_t f = 0; f < boxes.size(); ++f) {
    for (const std::uint32_t v : mesh.facets[f].vertices) boxes[f].Include(mesh.vertices[v]);
  }
  return boxes;
}

}  // namespace

SurfaceBlocks::SurfaceBlocks(const DexelLattice& lattice, const Box3& stockBox,
                             const SurfaceMakers& makers, const std::vector<Vec3>& points)
    : m_origin(lattice.Node(0, 0, 0)),
      m_side(kCellsASide * lattice.Spacing()),
      m_margin(kMarginInCells * lattice.Spacing()) {
  for (int axis = 0; axis < 3; ++axis) {
    m_counts[static_cast<std::size_t>(axis)] = (lattice.Nodes(axis) - 1) / kCellsASide + 1;
  }
  NumberBlocks(points);
  m_moves = Bin(BoxesWithin(makers.Moves(), 0, makers.Moves().Count(), stockBox.Grown(m_margin)));
  m_facets = Bin(BoxesOf(makers.Stock().Mesh()));
}

std::uint32_t SurfaceBlocks::BlockAt(const Vec3& point) const {
  return m_number[Index(Along(0, point.x), Along(1, point.y), Along(2, point.z))];
}

int SurfaceBlocks::Along(int axis, double coordinate) const {
  const double at = std::floor((coordinate - m_origin[axis]) / m_side);
  const int last = m_counts[static_cast<std::size_t>(axis)] - 1;
  return static_cast<int>(std::clamp(at, 0.0, static_cast<double>(last)));
}

template <class Visit>
void SurfaceBlocks::ForEachBlock(const Box3& box, const Visit& visit) const {
  if (box.IsEmpty()) return;
  for (int k = Along(2, box.low.z); k <= Along(2, box.high.z); ++k) {
    for (int j = Along(1, box.low.y); j <= Along(1, box.high.y); ++j) {
      const std::size_t row = Index(0, j, k);
      const int end = Along(0, box.high.x);
      for (int i = Along(0, box.low.x); i <= end; ++i) visit(row + static_cast<std::size_t>(i));
    }
  }
}

void SurfaceBlocks::NumberBlocks(const std::vector<Vec3>& points) {
  m_number.assign(Index(0, 0, m_counts[2]), kNone);
  for (const Vec3& point : points) {
    ForEachBlock(Box3{point, point}.Grown(m_margin),
                 [&](std::size_t block) { m_number[block] = 0; });
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

SurfaceBlocks::Lists SurfaceBlocks::Bin(const std::vector<Box3>& boxes) const {
  Lists lists;
  lists.begin.assign(Count() + 1, 0);
  const auto forEach = [&](const Box3& box, const auto& visit) {
    ForEachBlock(box.Grown(m_margin), [&](std::size_t block) {
      if (m_number[block] != kNone) visit(m_number[block]);
    });
  };
  for (const Box3& box : boxes) {
    forEach(box, [&](std::uint32_t block) { ++lists.begin[block + 1]; });
  }
  for (std::size_t i = 0; i < Count(); ++i) lists.begin[i + 1] += lists.begin[i];
  lists.items.resize(lists.begin.back());
  std::vector<std::size_t> next(lists.begin.begin(), lists.begin.end() - 1);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    forEach(boxes[i], [&](std::uint32_t block) {
      lists.items[next[block]++] = static_cast<std::uint32_t>(i);
    });
  }
  return lists;
}

}  // namespace kernel
