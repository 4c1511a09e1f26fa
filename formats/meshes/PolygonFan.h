#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/Mesh.h"

namespace formats {

// What is wrong with a polygon's zero-based corners in a mesh of `vertexCount` vertices; empty when
// nothing is.
std::string PolygonFault(const std::vector<std::int64_t>& corners, std::size_t vertexCount);

// Appends the polygon's facets: a fan about its first corner, right for convex polygons. The
// corners have been found without fault.
void AppendFan(const std::vector<std::int64_t>& corners, std::uint8_t colour,
               std::vector<Facet>& facets);

}  // namespace formats
