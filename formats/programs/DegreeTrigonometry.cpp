#include "formats/programs/DegreeTrigonometry.h"

#include <cmath>
#include <numbers>

namespace formats {
namespace {

// Taylor series on -pi/4..pi/4: the first term left out is below 1e-19.
double SineNearZero(double x) {
  const double s = x * x;
  double sum = 0;
  for (int n = 19; n > 1; n -= 2) {
    sum = -s / (n * (n - 1)) * (1 + sum);
  }
  return x + x * sum;
}

double CosineNearZero(double x) {
  const double s = x * x;
  double sum = 0;
  for (int n = 20; n > 0; n -= 2) {
    sum = -s / (n * (n - 1)) * (1 + sum);
  }
  return 1 + sum;
}

SineCosine InQuadrant(double radians, int quadrant) {
  const double sine = SineNearZero(radians);
  const double cosine = CosineNearZero(radians);
  switch (quadrant & 3) {
    case 0:
      return {sine, cosine};
    case 1:
      return {cosine, -sine};
    case 2:
      return {-sine, -cosine};
    default:
      return {-cosine, sine};
  }
}

}  // namespace

SineCosine SineCosineOfDegrees(double degrees) {
  const double turn = std::fmod(degrees, 360.0);
  const double quadrant = std::round(turn / 90.0);
  return InQuadrant((turn - quadrant * 90.0) * (std::numbers::pi / 180.0),
                    static_cast<int>(quadrant));
}

SineCosine SineCosineOfRadians(double radians) {
  // pi/2 as a sum of two doubles, the first short enough that its small multiples are exact.
  constexpr double kHigh = 0x1.921fb544p+0;
  constexpr double kLow = 0x1.0b4611a626331p-34;
  const double quadrant = std::round(radians / (std::numbers::pi / 2));
  const double rest = (radians - quadrant * kHigh) - quadrant * kLow;
  return InQuadrant(rest, static_cast<int>(std::fmod(quadrant, 4.0)));
}

double AngleOf(double y, double x) {
  const double angle = std::atan2(y, x);
  const double length = std::sqrt(x * x + y * y);
  if (!(length > 0) || !std::isfinite(length)) {
    return angle;
  }
  const SineCosine at = SineCosineOfRadians(angle);
  return angle + (y * at.cosine - x * at.sine) / length;
}

}  // namespace formats
