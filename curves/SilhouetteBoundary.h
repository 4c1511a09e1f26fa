#pragma once

/// The silhouette of `inputFile`, a binary surface file, along Z, as a file of curves. `distance`
/// and the box (lower and upper corner, three doubles each) in the host's unit. Geometry far from
/// the origin, very large or with a very small distance is moved for the run, in its file and its
/// box, and moved back.
/// `*result` is 0 until the run has ended, then what RunSilhouette returns. What passes through
/// leaves it 0, and input and box as they are then.
void SilhouetteBoundary(char* inputFile, char* outputFile, double distance, double* boxMin,
                        double* boxMax, unsigned char* result);
