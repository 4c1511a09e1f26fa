#pragma once

#include <string>

#include "formats/Mesh.h"

namespace formats {

// Polygon files, ASCII and binary of either byte order: x, y and z of the vertices, vertex_indices
// (or vertex_index) of the faces; other elements and properties are passed over. A face's red,
// green and blue become the nearest colour of the colour table; faces without get `colour`. Faces
// of more than three corners become fans. Throws FileError.
Mesh ReadPly(const std::string& path, std::uint8_t colour = 0);

// Little-endian; double precision; facets with the colour table's red, green and blue.
void WritePlyBinary(const std::string& path, const Mesh& mesh);
void WritePlyAscii(const std::string& path, const Mesh& mesh);

}  // namespace formats
