#pragma once

namespace kernel {

// A point or a direction in the half plane through a tool's axis.
struct ProfilePoint {
  double r = 0;  // away from the axis
  double z = 0;  // up from the tip

  friend constexpr bool operator==(const ProfilePoint&, const ProfilePoint&) = default;
};

constexpr ProfilePoint operator+(const ProfilePoint& a, const ProfilePoint& b) {
  return {a.r + b.r, a.z + b.z};
}
constexpr ProfilePoint operator-(const ProfilePoint& a, const ProfilePoint& b) {
  return {a.r - b.r, a.z - b.z};
}
constexpr ProfilePoint operator*(double factor, const ProfilePoint& a) {
  return {factor * a.r, factor * a.z};
}
constexpr double Dot(const ProfilePoint& a, const ProfilePoint& b) { return a.r * b.r + a.z * b.z; }

// Positive when b lies counter-clockwise of a (r to the right, z up).
constexpr double Cross(const ProfilePoint& a, const ProfilePoint& b) {
  return a.r * b.z - a.z * b.r;
}

}  // namespace kernel
