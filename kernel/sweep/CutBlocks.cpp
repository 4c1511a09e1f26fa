#include "kernel/sweep/CutBlocks.h"

#include "kernel/sweep/MoveBoxes.h"

namespace kernel {
namespace {

std::vector<Box3> BoxesOf(const StockMesh& mesh) {
  std::vector<Box3> boxes(mesh.facets.size());
  for (std::size_t f = 0; f < boxes.size(); ++f) {
    for (const std::uint32_t v : mesh.facets[f].vertices) boxes[f].Include(mesh.vertices[v]);
  }
  return boxes;
}

}  // namespace

CutBlocks::CutBlocks(const DexelLattice& lattice, const Box3& stockBox, const CutMakers& makers,
                     const std::vector<Vec3>& points)
    : m_makers(makers), m_grid(lattice, points) {
  m_moves =
      Bin(BoxesWithin(makers.Moves(), 0, makers.Moves().Count(), stockBox.Grown(m_grid.Margin())));
  m_facets = Bin(BoxesOf(makers.Stock().Mesh()));
}

std::unique_ptr<BlockParts> CutBlocks::InBlock(std::uint32_t block) const {
  const Box3& box = m_grid.BoxOf(block);
  return std::make_unique<BlockParts>(m_makers, m_moves.At(block), m_facets.At(block), box,
                                      box.Grown(-m_grid.Margin()));
}

CutBlocks::Lists CutBlocks::Bin(const std::vector<Box3>& boxes) const {
  Lists lists;
  lists.begin.assign(m_grid.Count() + 1, 0);
  for (const Box3& box : boxes) {
    m_grid.ForEachNear(box, [&](std::uint32_t block) { ++lists.begin[block + 1]; });
  }
  for (std::size_t i = 0; i < m_grid.Count(); ++i) lists.begin[i + 1] += lists.begin[i];
  lists.items.resize(lists.begin.back());
  std::vector<std::size_t> next(lists.begin.begin(), lists.begin.end() - 1);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    m_grid.ForEachNear(boxes[i], [&](std::uint32_t block) {
      lists.items[next[block]++] = static_cast<std::uint32_t>(i);
    });
  }
  return lists;
}

}  // namespace kernel
