#pragma once

/// The offset of `inputFile` by a ball, both binary surface files. Geometry is moved for the run as
/// for SilhouetteBoundary; `unscaledValue` reaches the kernel as it is, also when the geometry is
/// scaled.
/// `*result` is 0 until the run has ended, then what RunSphericalOffset returns; otherwise as
/// there.
void SphericalOffset(const char* inputFile, const char* outputFile, double distance,
                     double unscaledValue, double* boxMin, double* boxMax, unsigned char* result);
