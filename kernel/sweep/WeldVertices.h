#pragma once

#include "kernel/sweep/StockMesh.h"

namespace kernel {

// Joins vertices with the same three doubles (-0.0 and 0.0 are the same place) and leaves out
// facets that lose a corner by that, and vertices of no facet. Vertices and facets keep their
// order.
StockMesh WeldVertices(const StockMesh& given);

}  // namespace kernel
