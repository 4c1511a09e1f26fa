#pragma once

#include "kernel/common/Box3.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

struct PreparedPart {
  StockMesh mesh;       // vertices at the same place joined, but for those where sheets only touch
  Box3 box;             // of the vertices that facets use
  bool turned = false;  // a closed part whose facets faced inwards as a whole and have been turned
};

// Makes a part fit to be split: open or closed, each edge of a closed one is in exactly two facets
// by vertex number. Facets keep their order; those without three different corners are left out.
// Throws FatalError naming the vertex (counted from 1, as in a surface file) when a coordinate is
// not finite, and when the part is too large to measure.
PreparedPart PreparePart(const StockMesh& given);

}  // namespace kernel
