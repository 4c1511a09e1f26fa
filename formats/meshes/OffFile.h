#pragma once

#include <string>

#include "formats/Mesh.h"

namespace formats {

// Object file format, text, one element a line: "OFF", also with "C", "N" or "ST" ahead, whose
// values behind the coordinates are not looked at. A face's red, green and blue become the nearest
// colour of the colour table; faces without get `colour`. Faces of more than three corners become
// fans. Throws FileError.
Mesh ReadOff(const std::string& path, std::uint8_t colour = 0);

// Double precision; facets with the colour table's red, green and blue.
void WriteOff(const std::string& path, const Mesh& mesh);

}  // namespace formats
