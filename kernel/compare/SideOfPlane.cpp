#include "kernel/compare/SideOfPlane.h"

#include <cmath>
#include <limits>

#include "kernel/common/Expansion.h"

namespace kernel {
namespace {

using ExactSum = Expansion<96>;

// Adds the determinant of three points, or takes it away.
void AddDeterminant(ExactSum& sum, const Vec3& a, const Vec3& b, const Vec3& c, double sign) {
  sum.AddProduct(sign * a.x, b.y, c.z);
  sum.AddProduct(-sign * a.x, b.z, c.y);
  sum.AddProduct(sign * a.y, b.z, c.x);
  sum.AddProduct(-sign * a.y, b.x, c.z);
  sum.AddProduct(sign * a.z, b.x, c.y);
  sum.AddProduct(-sign * a.z, b.y, c.x);
}

int ExactSide(const Corners& triangle, const Vec3& point) {
  const auto& [a, b, c] = triangle;
  ExactSum sum;
  AddDeterminant(sum, point, b, c, 1);
  AddDeterminant(sum, a, point, c, 1);
  AddDeterminant(sum, a, b, point, 1);
  AddDeterminant(sum, a, b, c, -1);
  return sum.Sign();
}

}  // namespace

int SideOfPlane(const Corners& triangle, const Vec3& point) {
  const Vec3 a = triangle[0] - point;
  const Vec3 b = triangle[1] - point;
  const Vec3 c = triangle[2] - point;
  const double bcx = b.y * c.z, cbx = b.z * c.y;
  const double bcy = b.z * c.x, cby = b.x * c.z;
  const double bcz = b.x * c.y, cbz = b.y * c.x;
  const double determinant = a.x * (bcx - cbx) + a.y * (bcy - cby) + a.z * (bcz - cbz);
  const double permanent = std::abs(a.x) * (std::abs(bcx) + std::abs(cbx)) +
                           std::abs(a.y) * (std::abs(bcy) + std::abs(cby)) +
                           std::abs(a.z) * (std::abs(bcz) + std::abs(cbz));
  constexpr double kHalfUlp = std::numeric_limits<double>::epsilon() / 2;
  const double bound = (7 + 56 * kHalfUlp) * kHalfUlp * permanent;
  // Seen from the point, corners turn the other way when it lies where the normal points to.
  if (determinant > bound) return -1;
  if (determinant < -bound) return 1;
  return ExactSide(triangle, point);
}

}  // namespace kernel
