#include "kernel/sweep/ExactOrientation.h"

#include <cmath>
#include <limits>

#include "kernel/common/Expansion.h"

namespace kernel {

int OrientationSign(const Point2& a, const Point2& b, const Point2& c) {
  const double left = (a.x - c.x) * (b.y - c.y);
  const double right = (a.y - c.y) * (b.x - c.x);
  const double determinant = left - right;
  constexpr double kHalfUlp = std::numeric_limits<double>::epsilon() / 2;
  const double bound = (3 + 16 * kHalfUlp) * kHalfUlp * (std::abs(left) + std::abs(right));
  if (determinant > bound) return 1;
  if (determinant < -bound) return -1;
  Expansion<12> sum;
  sum.AddProduct(a.x, b.y);
  sum.AddProduct(-a.x, c.y);
  sum.AddProduct(-c.x, b.y);
  sum.AddProduct(-a.y, b.x);
  sum.AddProduct(a.y, c.x);
  sum.AddProduct(c.y, b.x);
  return sum.Sign();
}

int ShiftedOrientationSign(const Point2& a, const Point2& b, const Point2& point) {
  const int side = OrientationSign(a, b, point);
  if (side != 0) return side;
  if (a.y != b.y) return a.y > b.y ? 1 : -1;
  return b.x > a.x ? 1 : -1;
}

}  // namespace kernel
