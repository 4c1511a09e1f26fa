#pragma once

namespace kernel {

struct Point2 {
  double x = 0, y = 0;
};

// The sign (-1, 0, 1) of twice the signed area of the triangle a, b, c, exact for all finite
// doubles whose products neither overflow nor underflow: positive when c lies left of a to b.
// Source: Shewchuk, Adaptive Precision Floating-Point Arithmetic (1997): a filter in doubles, and
// where that cannot decide, an expansion of all six products.
int OrientationSign(const Point2& a, const Point2& b, const Point2& c);

// The same for a point that counts as shifted by an infinitely small step (x + e, y + e squared):
// never 0 for a and b apart, so that a ray through the point meets a closed surface as often one
// way as the other.
// Source: Edelsbrunner and Muecke, Simulation of Simplicity (1990).
int ShiftedOrientationSign(const Point2& a, const Point2& b, const Point2& point);

}  // namespace kernel
