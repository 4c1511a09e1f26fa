#include "formats/meshes/PolygonFan.h"

namespace formats {

std::string PolygonFault(const std::vector<std::int64_t>& corners, std::size_t vertexCount) {
  if (corners.size() < 3) {
    return "a face has " + std::to_string(corners.size()) + " corners, fewer than 3";
  }
  for (const std::int64_t corner : corners) {
    if (corner < 0 || static_cast<std::uint64_t>(corner) >= vertexCount) {
      return "a face names a vertex that is none of the file's " + std::to_string(vertexCount);
    }
  }
  return {};
}

void AppendFan(const std::vector<std::int64_t>& corners, std::uint8_t colour,
               std::vector<Facet>& facets) {
  const auto number = [&corners](std::size_t i) { return static_cast<std::int32_t>(corners[i]); };
  for (std::size_t i = 2; i < corners.size(); ++i) {
    facets.push_back({{number(0), number(i - 1), number(i)}, colour});
  }
}

}  // namespace formats
