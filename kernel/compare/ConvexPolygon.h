#pragma once

#include <array>
#include <cstddef>

#include "kernel/compare/TriangleFrame.h"

namespace kernel {

// A piece of a facet, convex, its corners in order. Empty when it has none.
class ConvexPolygon {
 public:
  // With one more corner a cut could not be stored.
  static constexpr std::size_t kMost = 10;

  ConvexPolygon() = default;
  explicit ConvexPolygon(const Corners& corners);

  std::size_t Count() const { return m_count; }
  const Vec3& At(std::size_t i) const { return m_corners[i]; }

  // The middle of its corners, and how far they are from there at most.
  Vec3 Middle() const;
  double Radius(const Vec3& middle, std::size_t& furthest) const;

  // What lies on either side of a plane; what touches it only is left out, and so is a side that
  // reaches no more than `thin` normals from the plane: all of the piece is on the other then.
  // Needs Count() < kMost.
  struct Sides;
  Sides Cut(const Vec3& onPlane, const Vec3& normal, double thin = 0) const;
  // Two pieces of about as many corners.
  Sides Halves() const;

 private:
  void Add(const Vec3& corner) { m_corners[m_count++] = corner; }

  std::array<Vec3, kMost> m_corners;
  std::size_t m_count = 0;
};

struct ConvexPolygon::Sides {
  ConvexPolygon above, below;  // above: where the normal points to
};

}  // namespace kernel
