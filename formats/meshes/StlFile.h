#pragma once

#include <string>

#include "formats/Mesh.h"

namespace formats {

// A file of exactly 84 + 50 n bytes, n the number at byte 80, is binary, whatever its header says:
// many a binary file's header begins with "solid". Else a file that begins with "solid" is ASCII.
bool IsBinaryStl(const std::string& path);

// Either kind, every solid of the file. Corners at the same place become one vertex; normals and
// attributes are not looked at; every facet gets `colour`. Throws FileError.
Mesh ReadStl(const std::string& path, std::uint8_t colour = 0);

// Single precision; a finite coordinate that does not fit is an error. No colours. Normals are
// computed, 0 0 0 for a facet without area. Throws FileError.
void WriteStlBinary(const std::string& path, const Mesh& mesh);

// Double precision. No colours.
void WriteStlAscii(const std::string& path, const Mesh& mesh);

}  // namespace formats
