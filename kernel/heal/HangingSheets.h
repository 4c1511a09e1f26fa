#pragma once

#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// Removes open pieces that share an edge, by vertex numbers, with a closed body: fins and walls
// that were one facet too many there. Returns how many facets that were.
std::size_t RemoveHangingSheets(LinkedMesh& linked);

}  // namespace kernel
