#include "kernel/compare/StockTree.h"

#include <algorithm>

#include "kernel/common/Workers.h"

namespace kernel {
namespace {

constexpr std::size_t kBlock = 4096;  // leaves that one task fills

}  // namespace

StockTree::StockTree(const StockMesh& mesh, const std::function<void(double)>& watch)
    : m_boxes(mesh, watch), m_corners(mesh.facets.size()) {
  m_frames.assign(mesh.facets.size(), TriangleFrame());
  m_leaves.resize(m_boxes.Leaves().size());
  RunTasks((m_leaves.size() + kBlock - 1) / kBlock,
           [&](std::size_t block) {
             const std::size_t end = std::min(m_leaves.size(), (block + 1) * kBlock);
             for (std::size_t i = block * kBlock; i < end; ++i) FillLeaf(mesh, i);
           },
           [&](std::size_t) { watch(0.9); });
  watch(1);
}

void StockTree::FillLeaf(const StockMesh& mesh, std::size_t number) {
  const FacetBoxes::Leaf& leaf = m_boxes.Leaves()[number];
  for (std::uint32_t slot = leaf.begin; slot < leaf.end; ++slot) {
    const auto& [a, b, c] = mesh.facets[m_boxes.Facets()[slot]].vertices;
    m_corners[slot] = {mesh.vertices[a], mesh.vertices[b], mesh.vertices[c]};
    m_frames[slot] = TriangleFrame(m_corners[slot]);
    m_leaves[number].Set(slot - leaf.begin, m_boxes, m_frames[slot]);
  }
}

}  // namespace kernel
