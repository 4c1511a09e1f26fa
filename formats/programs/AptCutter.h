#pragma once

#include <vector>

#include "formats/ToolpathRecords.h"

namespace formats {

// The standard convex tool of a CUTTER statement: its one to seven numbers d, r, e, f, a, b, h as
// they stand, lengths in any unit, `millimetre` the length of one in it. docs/apt.md has the
// mapping. Throws GCodeError (column 0) for numbers that make no such tool or contradict each
// other.
ConvexTool ToolOfCutter(const std::vector<double>& numbers, double millimetre);

}  // namespace formats
