#pragma once

#include <optional>
#include <string>

#include "formats/curves/Curves.h"

namespace formats {

enum class DrawingFormat { Svg, Dxf };

// The length unit of a drawing's numbers.
enum class DrawingUnit { Millimetre, Inch };

// "SVG", "DXF".
const char* NameOf(DrawingFormat format);

// By the name's end, in capitals or not: .svg, .dxf.
std::optional<DrawingFormat> DrawingFormatByExtension(const std::string& path);

// The same curves give the same bytes on every system. Throws FileError, also for a curve that runs
// through a point that is not finite.
void WriteDrawing(const std::string& path, const Curves& curves, DrawingFormat format,
                  DrawingUnit unit);

}  // namespace formats
