#pragma once

#include <string>
#include <vector>

#include "formats/ToolpathRecords.h"

namespace formats {

// The toolpath interchange file ("BinaryPaths.tmp"), the paths in file order. No path at all is
// valid; what follows the last one is ignored; doubles are passed on as they stand, NaN included.
// Throws FileError on anything else that is not as the format says.
std::vector<PathRecord> ReadInterchangeFile(const std::string& path);

// Throws FileError, also for a record that the format cannot hold: a path type other than 1 and 2,
// a custom tool without pieces, no cut, a cut without positions or with part of one.
void WriteInterchangeFile(const std::string& path, const std::vector<PathRecord>& records);

}  // namespace formats
