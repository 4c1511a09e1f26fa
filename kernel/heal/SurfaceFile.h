#pragma once

#include <string>

#include "formats/Mesh.h"
#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

// Takes over a mesh as it was read. Throws FatalError that names the first vertex that is not
// finite, and for a mesh too large to measure or to number.
SurfaceMesh SurfaceOf(const formats::Mesh& mesh);

formats::Mesh FileMeshOf(const SurfaceMesh& surface);

}  // namespace kernel
