#pragma once

#include "kernel/common/Vec3.h"

namespace kernel {

// The square of the distance between the segments from a to b and from c to d.
//
// Source: Ericson, Real-Time Collision Detection (2005), 5.1.9.
double SegmentDistanceSquared(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d);

}  // namespace kernel
