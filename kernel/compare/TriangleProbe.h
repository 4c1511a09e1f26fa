#pragma once

#include "kernel/compare/TriangleFrame.h"

namespace kernel {

// A triangle that is held against many others.
class TriangleProbe {
 public:
  explicit TriangleProbe(const Corners& corners);

  const Corners& Points() const { return m_corners; }
  // Unit length, or zero when the triangle has no area.
  const Vec3& Normal() const { return m_normal; }

  // Whether a point of the other triangle is at most `limit` from one of this.
  // Source: of the pairs of features Ericson, Real-Time Collision Detection (2005), 5.1.10.
  bool IsWithin(double limit, const Corners& other, const TriangleFrame& otherFrame) const;

 private:
  Corners m_corners;
  TriangleFrame m_frame;
  Vec3 m_normal;
};

}  // namespace kernel
