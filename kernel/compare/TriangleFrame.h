#pragma once

#include <array>

#include "kernel/common/Vec3.h"

namespace kernel {

using Corners = std::array<Vec3, 3>;

// A triangle in coordinates of its own plane: the longest side runs from (0, 0) to (length, 0), the
// third corner lies at (apex, height) with 0 <= apex <= length and height >= 0. The angles at the
// longest side are acute, so that which part of the triangle is nearest follows from few
// comparisons, and a triangle however thin is measured as exactly as any other: what the thinness
// takes from the direction `across` has no more than `height` to act on.
class TriangleFrame {
 public:
  TriangleFrame() = default;
  // A triangle without area is its longest side.
  explicit TriangleFrame(const Corners& corners);

  // The nearest point of the triangle, and how far it is, squared.
  Vec3 Nearest(const Vec3& from) const;
  double SquaredDistance(const Vec3& from) const { return LengthSquared(Offset(from)); }

  const Vec3& Origin() const { return m_origin; }
  const Vec3& Along() const { return m_along; }
  const Vec3& Across() const { return m_across; }
  Vec3 Normal() const { return Cross(m_along, m_across); }
  double Length() const { return m_length; }
  double Apex() const { return m_apex; }
  double Height() const { return m_height; }

 private:
  // From the nearest point of the triangle to `from`.
  Vec3 Offset(const Vec3& from) const;

  Vec3 m_origin, m_along, m_across;
  double m_length = 0, m_apex = 0, m_height = 0;
};

}  // namespace kernel
