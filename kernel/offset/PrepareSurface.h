#pragma once

#include "kernel/common/Box3.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

struct PreparedSurface {
  StockMesh mesh;  // vertices with the same three doubles joined, facets of fewer corners left out
  Box3 box;        // of the vertices that facets use
  bool isClosed = false;
  bool turned = false;  // facets of a closed mesh faced inwards as a whole and have been turned
};

// Throws FatalError naming the vertex (counted from 1, as in a surface file) when a coordinate is
// not finite, and when the box's diagonal is not.
PreparedSurface PrepareSurface(const StockMesh& given);

}  // namespace kernel
