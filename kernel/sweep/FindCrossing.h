#pragma once

#include "kernel/sweep/DexelModel.h"

namespace kernel {

struct RayCrossing {
  double at = 0;  // coordinate along the ray
  Generator maker;
};

// Where the ray leaves the solid (or enters it, when not `leaving`) between two neighbouring nodes,
// `low` < `high`, of which the lower (upper) one is solid. A ray that rounding lets disagree with
// its nodes answers with its nearest end of that kind, moved between the nodes; one without any
// solid with the stock's first facet, in the middle.
RayCrossing FindCrossing(const DexelRay& ray, double low, double high, bool leaving);

}  // namespace kernel
