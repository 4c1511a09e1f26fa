#pragma once

#include "kernel/common/Box3.h"

namespace kernel {

struct RaySpacing {
  double spacing = 0;
  double tolerance = 0;  // what the spacing can keep
  bool raised = false;   // above the wanted tolerance, for lack of memory
};

// How far apart the rays may be. A mesh edge of length L on a surface of curvature radius R is L^2
// / 8 R off it; facets of the dual mesh have edges up to about 1.4 times the spacing. `radius` is
// the smallest one among the cutters, infinite when all their faces are flat or cones. Depends on
// its arguments only, never on the memory that happens to be free.
RaySpacing ChooseRaySpacing(const Box3& box, double tolerance, double radius);

}  // namespace kernel
