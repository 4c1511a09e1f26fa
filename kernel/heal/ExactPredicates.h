#pragma once

#include <array>

#include "kernel/common/Vec3.h"

namespace kernel {

using Triangle = std::array<Vec3, 3>;

// How the insides (without sides and corners) of two triangles lie. Decided exactly. Triangles
// without area share nothing.
enum class Overlap {
  kNone,        // no common point
  kCrossing,    // they pass through each other
  kSameFacing,  // in one plane, with an area in common, facing the same way
  kFacingAway   // likewise, facing opposite ways
};
Overlap OverlapOf(const Triangle& a, const Triangle& b);

// Whether the ray from `point` in the direction of +z passes through the triangle. A ray that meets
// a side is taken to run an infinitesimal step beside it, always the same one, so that it meets a
// closed surface as often as it should. The point itself does not count.
bool IsAbove(const Triangle& triangle, const Vec3& point);

}  // namespace kernel
