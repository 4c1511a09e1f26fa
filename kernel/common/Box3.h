#pragma once

#include <algorithm>
#include <limits>

#include "kernel/common/Vec3.h"

namespace kernel {

// A box along the axes, its faces included. A new one is empty and grows by Include.
struct Box3 {
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();

  Vec3 low{kInfinity, kInfinity, kInfinity};
  Vec3 high{-kInfinity, -kInfinity, -kInfinity};

  bool IsEmpty() const { return low.x > high.x || low.y > high.y || low.z > high.z; }

  void Include(const Vec3& point) {
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], point[axis]);
      high[axis] = std::max(high[axis], point[axis]);
    }
  }

  bool Contains(const Vec3& point) const {
    return point.x >= low.x && point.x <= high.x && point.y >= low.y && point.y <= high.y &&
           point.z >= low.z && point.z <= high.z;
  }

  // 0 when the box is empty.
  double Diagonal() const { return IsEmpty() ? 0 : Length(high - low); }

  // One of the eight corners: bit k of `index` chooses the high side of axis k.
  Vec3 Corner(int index) const {
    return {(index & 1) != 0 ? high.x : low.x, (index & 2) != 0 ? high.y : low.y,
            (index & 4) != 0 ? high.z : low.z};
  }

  // `margin` may be negative; the box may become empty then.
  Box3 Grown(double margin) const {
    const Vec3 by{margin, margin, margin};
    return {low - by, high + by};
  }
};

inline Box3 Intersection(const Box3& a, const Box3& b) {
  Box3 both;
  for (int axis = 0; axis < 3; ++axis) {
    both.low[axis] = std::max(a.low[axis], b.low[axis]);
    both.high[axis] = std::min(a.high[axis], b.high[axis]);
  }
  return both;
}

}  // namespace kernel
