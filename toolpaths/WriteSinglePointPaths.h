#pragma once

#include "MfcApi.h"

/// Writes "BinaryPaths.tmp" in the working directory (which ends in a backslash): one 3-axis path
/// of a flat cutter of 1 inch radius that stands still, so that a sweep removes next to nothing and
/// the kernel stores the stock again at `compressTolerance`.
/// `point`: three doubles, both positions of the path; lengths in the host's unit.
/// False when the file cannot be opened or written; a part of it may stay on disk.
bool WriteSinglePointPaths(CString workingDirectory, double compressTolerance, const double* point);
