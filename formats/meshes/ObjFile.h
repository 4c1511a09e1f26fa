#pragma once

#include <string>

#include "formats/Mesh.h"

namespace formats {

// Wavefront OBJ: vertices and faces; other statements are not looked at, but for "usemtl colour_N",
// which gives the faces behind it the colour number N. Faces ahead of the first such line get
// `colour`. Faces of more than three corners become fans. Throws FileError.
Mesh ReadObj(const std::string& path, std::uint8_t colour = 0);

// Double precision; colours as "usemtl colour_N" wherever the colour changes.
void WriteObj(const std::string& path, const Mesh& mesh);

}  // namespace formats
