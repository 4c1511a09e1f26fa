#pragma once

#include <array>

#include "kernel/common/Vec3.h"

namespace kernel {

// Which part of a triangle holds a point: its inside, edge i (from corner i to the next), corner i.
struct TrianglePart {
  enum class Kind { kInside, kEdge, kCorner } kind = Kind::kInside;
  int index = 0;
};

struct PointOnTriangle {
  Vec3 point;
  TrianglePart part;
};

// The point of a triangle that has an area which is nearest to `from`.
//
// Source: Ericson, Real-Time Collision Detection (2005), 5.1.5.
PointOnTriangle NearestOnTriangle(const std::array<Vec3, 3>& corners, const Vec3& from);

}  // namespace kernel
