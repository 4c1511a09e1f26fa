#pragma once

// The points of a file are rewritten where they stand, block by block: moved so that `c` comes to
// the origin and then, when `scaled`, multiplied by `s`; or back. What refers to points by number
// stays. Neither the header's text nor anything behind the points is looked at.
//
// True when the whole file was rewritten. False when it cannot be opened; and when it is too short,
// cannot be written or `mode` is unknown, with the stream left open until the process ends and the
// points before that place rewritten.
//
// `fileName` is handed to the host together with its temporary directory.

/// A binary surface file, there and back.
bool ShiftSurfaceFile(bool scaled, double s, const double* c, const char* fileName);
bool RestoreSurfaceFile(bool scaled, double s, const double* c, const char* fileName);

/// A file of curves, back only: `mode` 0 the plain variant, 1 the tree variant.
bool RestoreCurveFile(int mode, bool scaled, double s, const double* c, const char* fileName);
