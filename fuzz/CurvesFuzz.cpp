// Any bytes as a file of curves: an error, or curves that can be measured and drawn.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/curves/CurveMeasures.h"
#include "formats/curves/CurvesFile.h"
#include "formats/curves/DrawingFile.h"

namespace {

void Draw(const formats::Curves& curves, formats::DrawingFormat format) {
  static const InputFile drawing("a.drawing");
  try {
    formats::WriteDrawing(drawing.Path(), curves, format, formats::DrawingUnit::Millimetre);
  } catch (const formats::FileError&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.curves");
  input.Write(data, size);
  try {
    const formats::Curves curves = formats::ReadCurves(input.Path());
    formats::MeasureCurves(curves);
    Draw(curves, formats::DrawingFormat::Svg);
    Draw(curves, formats::DrawingFormat::Dxf);
  } catch (const formats::FileError&) {
  }
  return 0;
}
