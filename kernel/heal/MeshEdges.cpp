#include "kernel/heal/MeshEdges.h"

#include <numeric>

namespace kernel {

MeshEdges::MeshEdges(const SurfaceMesh& mesh) : m_start(mesh.vertices.size() + 1, 0) {
  for (const SurfaceMesh::Facet& facet : mesh.facets) {
    if (facet.RepeatsVertex()) continue;
    const auto& v = facet.vertices;
    for (std::size_t i = 0; i < 3; ++i) ++m_start[std::min(v[i], v[i == 2 ? 0 : i + 1]) + 1];
  }
  std::partial_sum(m_start.begin(), m_start.end(), m_start.begin());
  m_sides.resize(m_start.back());
  std::vector<Index> next(m_start.begin(), m_start.end() - 1);
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    if (mesh.facets[f].RepeatsVertex()) continue;
    const auto& v = mesh.facets[f].vertices;
    for (std::size_t i = 0; i < 3; ++i) {
      const auto [lower, upper] = std::minmax(v[i], v[i == 2 ? 0 : i + 1]);
      const std::uint64_t down = v[i] == upper ? 1 : 0;
      m_sides[next[lower]++].key =
          (std::uint64_t{upper} << 1 | down) << 32 | static_cast<Index>(3 * f + i);
    }
  }
  for (std::size_t v = 0; v + 1 < m_start.size(); ++v) {
    std::sort(m_sides.begin() + m_start[v], m_sides.begin() + m_start[v + 1],
              [](const Side& a, const Side& b) { return a.key < b.key; });
  }
}

}  // namespace kernel
