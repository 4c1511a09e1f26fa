#pragma once

#include <optional>
#include <string>

#include "formats/Mesh.h"

namespace formats {

enum class MeshFormat { BinarySurface, Stl, Ply, Obj, Off };

// "binary surface", "STL", "PLY", "OBJ", "OFF".
const char* NameOf(MeshFormat format);

// By the name's end, in capitals or not: .iff and .tmp, .stl, .ply, .obj, .off.
std::optional<MeshFormat> FormatByExtension(const std::string& path);

// By the first bytes, or by the size for a binary STL; OBJ files have no mark of their own. Throws
// FileError when the file cannot be read.
std::optional<MeshFormat> FormatByContent(const std::string& path);

// By content, else by extension. Throws FileError for a file that is neither.
MeshFormat MeshFormatOf(const std::string& path);

// Reads a file of any of the formats. Facets without a colour of their own get `colour`. Throws
// FileError.
Mesh ReadMesh(const std::string& path, std::uint8_t colour = 0);

enum class MeshEncoding { Binary, Ascii };

// The encodings that a format can be written in; the first is the usual one.
bool CanWrite(MeshFormat format, MeshEncoding encoding);
MeshEncoding UsualEncoding(MeshFormat format);

// Throws FileError.
void WriteMesh(const std::string& path, const Mesh& mesh, MeshFormat format, MeshEncoding encoding);

}  // namespace formats
