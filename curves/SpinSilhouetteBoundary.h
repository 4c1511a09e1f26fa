#pragma once

/// The silhouette of `inputFile`, a binary surface file, spun about the X axis, as a file of
/// curves: `mode` 0 plain, 1 the tree variant. Geometry is moved for the run as for
/// SilhouetteBoundary, but along X only, since the axis must stay where it is.
/// `*result` is 0 until the run has ended, then what RunSpinSilhouette returns; otherwise as there.
void SpinSilhouetteBoundary(const char* inputFile, int mode, const char* outputFile,
                            double distance, double* boxMin, double* boxMax, unsigned char* result);
