#pragma once

#include <functional>

#include "kernel/compare/CompareBands.h"
#include "kernel/compare/StockTree.h"
#include "kernel/sweep/CutMesh.h"

namespace kernel {

// The part in the colours of the bands that its deviations from the stock lie in. A facet that no
// one band holds is halved at its longest edge, and so are its pieces, down to edges of `finest`,
// where the centroid decides; whatever shares a halved edge is halved with it. The other facets
// come out as they are, in their order, pieces in the place of their facet.
//
// `tell` hears the share that is done, at least every 50 ms while other threads work, and may throw
// to stop.
CutMesh SplitIntoBands(const StockMesh& part, const StockTree& stock, const CompareBands& bands,
                       double finest, const std::function<void(double)>& tell);

}  // namespace kernel
