#pragma once

#include "kernel/compare/TriangleFrame.h"

namespace kernel {

// Which side of a triangle's plane a point lies on: 1 where (b - a) x (c - a) points to, -1 on the
// other, 0 in the plane. Exact for all finite doubles whose products neither overflow nor
// underflow. Source: Shewchuk, Adaptive Precision Floating-Point Arithmetic (1997): a filter in
// doubles, and where that cannot decide, an expansion of all products.
int SideOfPlane(const Corners& triangle, const Vec3& point);

}  // namespace kernel
