#pragma once

#include "kernel/common/Vec3.h"
#include "kernel/sweep/ConvexTool.h"

namespace kernel {

// Rays against an upright tool (axis +z) that moves along `move` from the origin, in closed form
// wherever there is one. Both answers are false when the ray misses the swept body's inside.

// The ray upwards at (x, y): the height at which it enters the body. It never leaves it.
bool EnterFromBelow(const ConvexTool& tool, const Vec3& move, double x, double y, double& height);

// The ray along x at (y, z). Exits through an unbounded side do not exist: the section is bounded.
bool SpanAtHeight(const ConvexTool& tool, const Vec3& move, double y, double z, double& low,
                  double& high);

}  // namespace kernel
