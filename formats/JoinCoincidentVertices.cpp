#include <utility>

#include "formats/MeshMeasures.h"
#include "formats/VertexJoiner.h"

namespace formats {

std::size_t JoinCoincidentVertices(Mesh& mesh) {
  const std::vector<std::array<double, 3>> before = std::exchange(mesh.vertices, {});
  std::vector<std::int32_t> newNumber;
  newNumber.reserve(before.size());
  VertexJoiner joiner(mesh.vertices);
  for (const auto& vertex : before) newNumber.push_back(joiner.Number(vertex));
  for (Facet& facet : mesh.facets) {
    for (std::int32_t& vertex : facet.vertices) {
      vertex = newNumber[static_cast<std::size_t>(vertex)];
    }
  }
  return before.size() - mesh.vertices.size();
}

}  // namespace formats
