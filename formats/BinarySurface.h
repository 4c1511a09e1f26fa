#pragma once

#include <string>

#include "formats/Mesh.h"

namespace formats {

// The binary surface file (".iff", ".tmp"). An empty surface (no vertices, no facets) is valid;
// bytes after the last facet are not looked at. Coordinates are passed on as they stand, NaN
// included. Throws FileError on anything else that is not as the format says, a facet's vertex
// number outside the file's vertices included.
Mesh ReadBinarySurface(const std::string& path);

// Vertices and facets are written in the mesh's order. Throws FileError, also for a facet that
// names a vertex the mesh does not have and for more vertices or facets than the format can count.
void WriteBinarySurface(const std::string& path, const Mesh& mesh);

}  // namespace formats
