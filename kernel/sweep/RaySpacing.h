#pragma once

#include <limits>

#include "kernel/common/Box3.h"

namespace kernel {

// What the cutters ask of the rays.
struct Curvature {
  double radius = std::numeric_limits<double>::infinity();  // the smallest of their round faces
  double tipSlope = 0;  // the steepest sharp tip: sine of its face's rise over level, 0 without one
};

struct RaySpacing {
  double spacing = 0;
  double tolerance = 0;  // what the spacing can keep
  bool raised = false;   // above the wanted tolerance, for lack of memory
};

// How far apart the rays may be. A mesh edge of length L on a surface of curvature radius R is
// L^2 / 8 R off it; facets of the dual mesh have edges up to about 1.4 times the spacing. Near the
// sharp tip of a cone R shrinks with the distance from the tip, of which the first ray spacing
// counts. Depends on its arguments only, never on the memory that happens to be free.
RaySpacing ChooseRaySpacing(const Box3& box, double tolerance, const Curvature& curvature);

}  // namespace kernel
