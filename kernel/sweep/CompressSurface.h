#pragma once

#include "kernel/common/Reporter.h"
#include "kernel/sweep/CutMesh.h"

namespace kernel {

// Merges facets of a cut stock within the tolerance; 0 leaves it as it is. `diagonal`: of the
// stock's box.
CutMesh CompressCut(CutMesh mesh, double tolerance, double diagonal, Reporter& reporter);

// The same for a stock from which nothing was cut. Here facets without area go first, and what lies
// exactly in one plane is merged whatever the tolerance, as cutting has done otherwise. A mesh with
// an edge in more than two facets stays as it is, with a warning.
CutMesh CompressUncut(CutMesh mesh, double tolerance, double diagonal, Reporter& reporter);

}  // namespace kernel
