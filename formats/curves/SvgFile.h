#pragma once

#include <string>

#include "formats/curves/DrawingFile.h"

namespace formats {

// The curves seen along z as one path, to scale: y points up, curves in curves are holes, and a
// fiftieth of the larger extent is left free all around. Heights are not kept. Coordinates must be
// finite. Throws FileError.
void WriteSvg(const std::string& path, const Curves& curves, DrawingUnit unit);

}  // namespace formats
