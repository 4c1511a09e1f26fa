#pragma once

#include "kernel/common/StageProgress.h"
#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// Unites closed bodies that cross each other. No vertex that stays moves; new ones lie where facets
// crossed. Returns how many pairs of crossing facets are left (see FindCrossings).
std::size_t RemoveCrossingFacets(LinkedMesh& linked, double tolerance, StageProgress& progress);

}  // namespace kernel
