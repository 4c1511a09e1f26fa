#pragma once

#include <string>

/// Moves the points of a binary surface file where they stand as plainly as it can be written: each
/// is read, sought back to, written and sought behind. Only for comparison.
bool PlainShiftSurface(const std::string& path, double scale, const double* centre);
