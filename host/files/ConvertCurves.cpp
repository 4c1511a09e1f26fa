#include "host/files/ConvertCurves.h"

#include <algorithm>

#include "formats/FileError.h"
#include "formats/curves/CurvesFile.h"
#include "host/files/MeshOutput.h"
#include "host/files/StagedFile.h"

namespace host {

namespace {

std::size_t CountPoints(const formats::Curves& curves) {
  std::size_t points = 0;
  for (const formats::Curve& curve : curves.curves) points += curve.points.size();
  return points;
}

}  // namespace

CurvesConversion ConvertCurves(const std::string& input, const std::string& output,
                               formats::DrawingUnit unit) {
  const auto format = formats::DrawingFormatByExtension(output);
  if (!format) throw formats::FileError(output + ": curves can become .svg and .dxf files only");
  RefuseOutputOverInput(input, output);
  StagedFile staged(output);
  const formats::Curves curves = formats::ReadCurves(input);
  staged.Write(
      [&](const std::string& path) { formats::WriteDrawing(path, curves, *format, unit); });
  staged.PutInPlace();
  return {curves.variant, *format, curves.curves.size(), CountPoints(curves),
          LosesHeights(curves, *format)};
}

bool LosesHeights(const formats::Curves& curves, formats::DrawingFormat format) {
  if (format != formats::DrawingFormat::Svg) return false;
  const auto isRaised = [&curves](std::int32_t number) {
    return curves.points[static_cast<std::size_t>(number)][2] != 0;
  };
  return std::any_of(curves.curves.begin(), curves.curves.end(), [&](const formats::Curve& curve) {
    return std::any_of(curve.points.begin(), curve.points.end(), isRaised);
  });
}

}  // namespace host
