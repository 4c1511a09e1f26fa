#pragma once

#include <array>
#include <cmath>

namespace host {

using Point = std::array<double, 3>;  // also a vector

inline Point operator+(const Point& a, const Point& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Point operator-(const Point& a, const Point& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Point operator*(double factor, const Point& a) {
  return {factor * a[0], factor * a[1], factor * a[2]};
}
inline double Dot(const Point& a, const Point& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Point Cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Length(const Point& a) { return std::sqrt(Dot(a, a)); }

using Triangle = std::array<Point, 3>;

inline Point Centroid(const Triangle& t) { return (1.0 / 3.0) * (t[0] + t[1] + t[2]); }
/// Half the length is the area; points to where the corners run counter-clockwise.
inline Point DoubleAreaNormal(const Triangle& t) { return Cross(t[1] - t[0], t[2] - t[0]); }
inline double Area(const Triangle& t) { return 0.5 * Length(DoubleAreaNormal(t)); }

/// Four of the same shape and half the size.
inline std::array<Triangle, 4> Quarters(const Triangle& t) {
  const Point ab = 0.5 * (t[0] + t[1]);
  const Point bc = 0.5 * (t[1] + t[2]);
  const Point ca = 0.5 * (t[2] + t[0]);
  return {{{t[0], ab, ca}, {ab, t[1], bc}, {ca, bc, t[2]}, {ab, bc, ca}}};
}

}  // namespace host
