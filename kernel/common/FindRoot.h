#pragma once

#include <cmath>
#include <utility>

namespace kernel {

// A root of a continuous function between `a` and `b`, at which it has the values `fa` and `fb` of
// opposite signs (or 0), to the last bits of `a` and `b`. A function that jumps is followed to the
// jump. Method: Chandrupatla, "A new hybrid quadratic/bisection algorithm for finding the zero of a
// nonlinear function without using derivatives", Adv. Eng. Software 28 (1997).
template <typename Function>
double FindRoot(Function&& function, double a, double fa, double b, double fb) {
  if (fa == 0) return a;
  double t = 0.5;
  for (int step = 0; step < 200; ++step) {
    const double x = a + t * (b - a);
    const double fx = function(x);
    double c = b;
    double fc = fb;
    if (std::signbit(fx) == std::signbit(fa)) {
      c = a;
      fc = fa;
    } else {
      b = a;
      fb = fa;
    }
    a = x;
    fa = fx;
    const double best = std::abs(fa) < std::abs(fb) ? a : b;
    const double width = std::abs(b - a);
    const double smallest = 2.3e-16 * std::abs(best) + 1e-300;
    if (fa == 0 || width <= 2 * smallest) return fa == 0 ? a : best;
    const double xi = (a - b) / (c - b);
    const double phi = (fa - fb) / (fc - fb);
    t = 0.5;
    if (phi * phi < xi && (1 - phi) * (1 - phi) < 1 - xi) {
      t = fa / (fb - fa) * fc / (fb - fc) + (c - a) / (b - a) * fa / (fc - fa) * fb / (fc - fb);
    }
    const double margin = smallest / width;
    t = std::fmin(std::fmax(t, margin), 1 - margin);
  }
  return a;
}

}  // namespace kernel
