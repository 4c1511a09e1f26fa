#include "kernel/compare/StockTree.h"

namespace kernel {

StockTree::StockTree(const StockMesh& mesh, const std::function<void(double)>& watch)
    : m_mesh(mesh), m_boxes(mesh, watch) {
  m_frames.reserve(mesh.facets.size());
  for (std::uint32_t slot = 0; slot < mesh.facets.size(); ++slot) {
    m_frames.emplace_back(CornersOf(slot));
  }
  watch(1);
}

Corners StockTree::CornersOf(std::uint32_t slot) const {
  const auto& v = m_mesh.facets[m_boxes.Facets()[slot]].vertices;
  return {m_mesh.vertices[v[0]], m_mesh.vertices[v[1]], m_mesh.vertices[v[2]]};
}

}  // namespace kernel
