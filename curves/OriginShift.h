#pragma once

// The kernel works best near the origin, within a bounded size and with a distance that is not
// tiny. These decide whether geometry is moved (and scaled) for a run, and move box and distance.
// Lengths are in the host's unit; every array holds three doubles.

/// The point that is moved to the origin: the box's middle, and a little off it.
void ShiftCentre(const double* boxMin, const double* boxMax, double* c);

/// Whether the geometry is to be scaled, because the distance is very small or else the box very
/// large; `*s` is the factor, 1 when not.
bool ChooseScale(double distance, const double* boxMin, const double* boxMax, double* s);

/// Whether the centre alone, without a scale, is reason to move the geometry.
bool IsFarFromOrigin(const double* c);

/// Moves box and distance to where the kernel works, and back. The way back may leave the last bits
/// different. A distance of an unscaled run stays as it is.
void ApplyShift(const double* c, bool scaled, double s, double* boxMin, double* boxMax,
                double* distance);
void RestoreShift(bool scaled, double s, const double* c, double* distance, double* boxMin,
                  double* boxMax);
