#pragma once

#include <cstdint>

#include "kernel/sweep/ExactOrientation.h"

namespace kernel {

// Points of the plane are those of a grid: whole numbers below 2^52 as doubles, so that differences
// are exact and OrientationSign decides exactly.

constexpr bool SamePoint(const Point2& a, const Point2& b) { return a.x == b.x && a.y == b.y; }

// The order of the sweep line: by x, at one x by y.
constexpr bool ComesBefore(const Point2& a, const Point2& b) {
  return a.x != b.x ? a.x < b.x : a.y < b.y;
}

// How often a place is covered, and how often a solid winds around it. Two counts, so that a solid
// that is wound the other way round does not take away what covers it.
struct Winding {
  std::int32_t cover = 0;
  std::int32_t solid = 0;

  constexpr bool IsInside() const { return cover > 0 || solid != 0; }
  constexpr bool IsZero() const { return cover == 0 && solid == 0; }
  constexpr Winding& operator+=(const Winding& other) {
    cover += other.cover;
    solid += other.solid;
    return *this;
  }
  constexpr Winding operator-() const { return {-cover, -solid}; }
};

// A straight edge; on its left the winding is higher by `step` than on its right.
struct PlaneEdge {
  Point2 from, to;
  Winding step;
};

}  // namespace kernel
