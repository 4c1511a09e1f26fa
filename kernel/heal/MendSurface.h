#pragma once

#include "kernel/common/StageProgress.h"
#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// Mends a surface that is not sound. Vertices at one place must be one vertex already. Warns of
// whatever could not be mended, with the count.
SurfaceMesh MendSurface(SurfaceMesh mesh, double tolerance, StageProgress& progress);

}  // namespace kernel
