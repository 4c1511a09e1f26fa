#include "formats/curves/DrawingFile.h"

#include <cmath>

#include "formats/FileError.h"
#include "formats/curves/DxfFile.h"
#include "formats/curves/SvgFile.h"

namespace formats {
namespace {

// Capitals count for nothing.
bool EndsWith(const std::string& path, const std::string& extension) {
  if (path.size() < extension.size()) return false;
  std::string end = path.substr(path.size() - extension.size());
  for (char& c : end) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return end == extension;
}

void RequireFinite(const std::string& path, const Curves& curves) {
  for (const Curve& curve : curves.curves) {
    for (const std::int32_t number : curve.points) {
      for (const double coordinate : curves.points[static_cast<std::size_t>(number)]) {
        if (std::isfinite(coordinate)) continue;
        throw FileError(path + ": point " + std::to_string(number + 1) +
                        " has a coordinate that is not finite");
      }
    }
  }
}

}  // namespace

const char* NameOf(DrawingFormat format) { return format == DrawingFormat::Svg ? "SVG" : "DXF"; }

std::optional<DrawingFormat> DrawingFormatByExtension(const std::string& path) {
  if (EndsWith(path, ".svg")) return DrawingFormat::Svg;
  if (EndsWith(path, ".dxf")) return DrawingFormat::Dxf;
  return std::nullopt;
}

void WriteDrawing(const std::string& path, const Curves& curves, DrawingFormat format,
                  DrawingUnit unit) {
  RequireFinite(path, curves);
  if (format == DrawingFormat::Svg) return WriteSvg(path, curves, unit);
  WriteDxf(path, curves, unit);
}

}  // namespace formats
