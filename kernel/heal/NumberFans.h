#pragma once

#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// Gives every fan of facets around a vertex a vertex of its own, so that what is linked is what
// shares an edge by vertex numbers. The first fan keeps the vertex, copies follow it; the order is
// kept and vertices without facets go. Where the same two fans meet along two links, all but one
// of these edges are split in the middle.
void NumberFans(LinkedMesh& linked);

}  // namespace kernel
