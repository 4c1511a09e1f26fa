#pragma once

#include <array>
#include <cstddef>
#include <utility>

namespace kernel {

// A sum of doubles, kept exactly as terms that do not overlap, smallest first; up to `kMost` terms
// may be added. Exact as long as no product overflows or underflows.
// Source: Shewchuk, Adaptive Precision Floating-Point Arithmetic (1997).
template <std::size_t kMost>
class Expansion {
 public:
  void Add(double value) {
    double carried = value;
    for (std::size_t i = 0; i < m_size; ++i) {
      double& term = m_terms[i];
      const double sum = term + carried;
      const double part = sum - carried;
      const double error = (carried - (sum - part)) + (term - part);
      term = error;
      carried = sum;
    }
    m_terms[m_size++] = carried;
  }

  // Two terms.
  void AddProduct(double a, double b) {
    const auto [product, error] = Product(a, b);
    Add(error);
    Add(product);
  }

  // Four terms.
  void AddProduct(double a, double b, double c) {
    const auto [product, error] = Product(a, b);
    AddProduct(error, c);
    AddProduct(product, c);
  }

  // -1, 0 or 1: that of the last term which is not zero.
  int Sign() const {
    for (std::size_t i = m_size; i > 0; --i) {
      const double term = m_terms[i - 1];
      if (term != 0) return term > 0 ? 1 : -1;
    }
    return 0;
  }

 private:
  // A product and what rounding takes from it, by Dekker: not std::fma, which is not exact in every
  // run-time library.
  static std::pair<double, double> Product(double a, double b) {
    const double product = a * b;
    const auto [aHigh, aLow] = Split(a);
    const auto [bHigh, bLow] = Split(b);
    return {product, aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow)};
  }

  static std::pair<double, double> Split(double a) {
    const double scaled = 134217729.0 * a;  // 2^27 + 1
    const double high = scaled - (scaled - a);
    return {high, a - high};
  }

  std::array<double, kMost> m_terms{};
  std::size_t m_size = 0;
};

}  // namespace kernel
