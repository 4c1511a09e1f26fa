#include "kernel/sweep/ExactOrientation.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace kernel {
namespace {

// A sum of doubles that do not overlap, smallest first; its sign is that of the last non-zero one.
class Expansion {
 public:
  void Add(double value) {
    double carried = value;
    for (int i = 0; i < m_size; ++i) {
      double& term = m_terms[static_cast<std::size_t>(i)];
      const double sum = term + carried;
      const double part = sum - carried;
      const double error = (carried - (sum - part)) + (term - part);
      term = error;
      carried = sum;
    }
    m_terms[static_cast<std::size_t>(m_size++)] = carried;
  }

  // Dekker's product: not std::fma, which is not exact in every run-time library.
  void AddProduct(double a, double b) {
    const double product = a * b;
    const auto [aHigh, aLow] = Split(a);
    const auto [bHigh, bLow] = Split(b);
    Add(aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow));
    Add(product);
  }

  int Sign() const {
    for (int i = m_size - 1; i >= 0; --i) {
      const double term = m_terms[static_cast<std::size_t>(i)];
      if (term != 0) return term > 0 ? 1 : -1;
    }
    return 0;
  }

 private:
  static std::pair<double, double> Split(double a) {
    const double scaled = 134217729.0 * a;  // 2^27 + 1
    const double high = scaled - (scaled - a);
    return {high, a - high};
  }

  std::array<double, 12> m_terms{};
  int m_size = 0;
};

}  // namespace

int OrientationSign(const Point2& a, const Point2& b, const Point2& c) {
  const double left = (a.x - c.x) * (b.y - c.y);
  const double right = (a.y - c.y) * (b.x - c.x);
  const double determinant = left - right;
  constexpr double kHalfUlp = std::numeric_limits<double>::epsilon() / 2;
  const double bound = (3 + 16 * kHalfUlp) * kHalfUlp * (std::abs(left) + std::abs(right));
  if (determinant > bound) return 1;
  if (determinant < -bound) return -1;
  Expansion sum;
  sum.AddProduct(a.x, b.y);
  sum.AddProduct(-a.x, c.y);
  sum.AddProduct(-c.x, b.y);
  sum.AddProduct(-a.y, b.x);
  sum.AddProduct(a.y, c.x);
  sum.AddProduct(c.y, b.x);
  return sum.Sign();
}

}  // namespace kernel
