#include "curves/OriginShift.h"

#include <cmath>

#include "platform/QZCore.h"

namespace {

// Half a distance that needs no scaling. What is scaled comes to rest a little above the bound, so
// that it is not scaled once more.
constexpr double kLeastHalfDistance = 4.9999999e-5;
constexpr double kScaledHalfDistance = 5e-5;
// Nothing that is meant as a length is that short.
constexpr double kNoHalfDistance = 1e-12;
constexpr double kLargestExtent = 3950.0;
constexpr double kScaledExtent = 3900.0;

// Asked anew each time: the host may watch what is asked of it.
bool IsWithinReach(double coordinate) {
  const double reach = IsMetric() ? 500.0 : 20.0;
  return std::abs(coordinate) <= reach;
}

}  // namespace

void ShiftCentre(const double* boxMin, const double* boxMax, double* c) {
  for (int axis = 0; axis < 3; ++axis) c[axis] = (boxMin[axis] + boxMax[axis]) * 0.5;
  // Off the middle on purpose: a box around the origin is not to have its faces and edges in the
  // planes of symmetry.
  const double nudge = IsMetric() ? 0.1 : 0.04;
  c[0] += 5 * nudge;
  c[1] += nudge;
}

bool ChooseScale(double distance, const double* boxMin, const double* boxMax, double* s) {
  const double half = distance * 0.5;
  *s = 1.0;
  if (half < kLeastHalfDistance && half > kNoHalfDistance) {
    *s = kScaledHalfDistance / half;
    return true;
  }
  double largest = kLargestExtent;
  for (int axis = 0; axis < 3; ++axis) {
    // An extent that is no number is not the largest.
    if (boxMax[axis] - boxMin[axis] > largest) largest = boxMax[axis] - boxMin[axis];
  }
  if (largest == kLargestExtent) return false;
  const double scale = kScaledExtent / largest;
  // A distance that this would make too small, or that is none at all, is worse than a large box.
  if (scale * half < kLeastHalfDistance) return false;
  *s = scale;
  return true;
}

bool IsFarFromOrigin(const double* c) {
  return !(IsWithinReach(c[0]) && IsWithinReach(c[1]) && IsWithinReach(c[2]));
}

void ApplyShift(const double* c, bool scaled, double s, double* boxMin, double* boxMax,
                double* distance) {
  for (int axis = 0; axis < 3; ++axis) {
    boxMin[axis] -= c[axis];
    boxMax[axis] -= c[axis];
  }
  if (!scaled) return;
  for (int axis = 0; axis < 3; ++axis) {
    boxMin[axis] *= s;
    boxMax[axis] *= s;
  }
  *distance *= s;
}

void RestoreShift(bool scaled, double s, const double* c, double* distance, double* boxMin,
                  double* boxMax) {
  if (scaled) {
    *distance /= s;
    for (int axis = 0; axis < 3; ++axis) {
      boxMin[axis] /= s;
      boxMax[axis] /= s;
    }
  }
  for (int axis = 0; axis < 3; ++axis) {
    boxMin[axis] += c[axis];
    boxMax[axis] += c[axis];
  }
}
