#pragma once

namespace formats {

struct SineCosine {
  double sine;
  double cosine;
};

// Sine and cosine from operations that IEEE 754 rounds the same everywhere, so that a program gives
// the same positions, bit for bit, whatever the system's mathematical library. Within two units in
// the last place; exact at multiples of 90 degrees. Angles in degrees and radians respectively.
SineCosine SineCosineOfDegrees(double degrees);
SineCosine SineCosineOfRadians(double radians);

// Angle from (1, 0) to (x, y) in radians, -pi to pi: the library's, corrected by one step towards
// what the functions above say, so that libraries that differ in the last place agree.
double AngleOf(double y, double x);

}  // namespace formats
