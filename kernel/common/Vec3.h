#pragma once

#include <cmath>

namespace kernel {

// A point or a direction in space; three doubles, no invariant.
struct Vec3 {
  double x = 0, y = 0, z = 0;

  constexpr double operator[](int axis) const { return axis == 0 ? x : axis == 1 ? y : z; }
  constexpr double& operator[](int axis) { return axis == 0 ? x : axis == 1 ? y : z; }
  constexpr Vec3& operator+=(const Vec3& b) {
    x += b.x;
    y += b.y;
    z += b.z;
    return *this;
  }
  constexpr Vec3& operator-=(const Vec3& b) {
    x -= b.x;
    y -= b.y;
    z -= b.z;
    return *this;
  }
  constexpr Vec3& operator*=(double factor) {
    x *= factor;
    y *= factor;
    z *= factor;
    return *this;
  }
  friend constexpr bool operator==(const Vec3&, const Vec3&) = default;
};

constexpr Vec3 operator+(Vec3 a, const Vec3& b) { return a += b; }
constexpr Vec3 operator-(Vec3 a, const Vec3& b) { return a -= b; }
constexpr Vec3 operator-(const Vec3& a) { return {-a.x, -a.y, -a.z}; }
constexpr Vec3 operator*(Vec3 a, double factor) { return a *= factor; }
constexpr Vec3 operator*(double factor, Vec3 a) { return a *= factor; }
constexpr Vec3 operator/(const Vec3& a, double divisor) {
  return {a.x / divisor, a.y / divisor, a.z / divisor};
}

constexpr double Dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

constexpr Vec3 Cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

constexpr double LengthSquared(const Vec3& a) { return Dot(a, a); }
inline double Length(const Vec3& a) { return std::sqrt(LengthSquared(a)); }

// The zero vector stays zero.
inline Vec3 Normalised(const Vec3& a) {
  const double length = Length(a);
  return length > 0 ? a / length : a;
}

inline bool IsFinite(const Vec3& a) {
  return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

}  // namespace kernel
