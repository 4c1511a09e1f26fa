#pragma once

#include <array>
#include <cmath>
#include <limits>

namespace support {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Point = std::array<double, 3>;

inline Point Minus(const Point& a, const Point& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Point Plus(const Point& a, const Point& b, double factor = 1) {
  return {a[0] + factor * b[0], a[1] + factor * b[1], a[2] + factor * b[2]};
}
inline double Dot(const Point& a, const Point& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Point Cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Length(const Point& a) { return std::sqrt(Dot(a, a)); }

/// A vector of no length stays one.
inline Point Unit(const Point& a) {
  const double length = Length(a);
  return length > 0 ? Plus({}, a, 1 / length) : a;
}

}  // namespace support
