#pragma once

namespace formats {

// Turns lengths in one unit into another. A division, so that 25.4 mm are 1 inch to the last bit.
struct LengthScale {
  double times = 1;
  double over = 1;

  double operator()(double length) const { return length * times / over; }
};

inline constexpr double kMillimetresPerInch = 25.4;

// Each unit is the millimetre or else the inch.
constexpr LengthScale ScaleBetween(bool fromMetric, bool toMetric) {
  return {toMetric && !fromMetric ? kMillimetresPerInch : 1,
          fromMetric && !toMetric ? kMillimetresPerInch : 1};
}

}  // namespace formats
