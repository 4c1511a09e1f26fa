#pragma once

#include "kernel/common/StageProgress.h"
#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// Mends closed bodies that cross themselves within `tolerance`, and unites those that cross each
// other: vertices that stay do not move. Facets that cross nothing keep their order, the others
// follow. Returns how many pairs of crossing facets are left (see FindCrossings).
std::size_t RemoveCrossings(LinkedMesh& linked, double tolerance, double least,
                            StageProgress& progress);

}  // namespace kernel
