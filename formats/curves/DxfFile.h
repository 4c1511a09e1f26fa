#pragma once

#include <string>

#include "formats/curves/DrawingFile.h"

namespace formats {

// Each curve as a closed polyline of DXF release 12, which every CAD program reads: one in a plane
// z = constant as a polyline of that elevation, any other as one in space. The release has no place
// for the unit; a comment at the beginning names it. Coordinates must be finite. Throws FileError.
void WriteDxf(const std::string& path, const Curves& curves, DrawingUnit unit);

}  // namespace formats
