#pragma once

#include <cstddef>
#include <string>

#include "formats/curves/DrawingFile.h"

namespace host {

/// What a file of curves has been turned into.
struct CurvesConversion {
  formats::CurvesVariant variant{};  // of the input
  formats::DrawingFormat format{};
  std::size_t curves = 0;
  std::size_t points = 0;
  bool heightsLost = false;  // the points are not all at z = 0, and the drawing is flat
};

/// Reads curves of either variant and makes a drawing of them, put in its place in one go; the
/// output's extension says the format. Throws formats::FileError, also when the output is the input
/// under whatever name; nothing is written then.
CurvesConversion ConvertCurves(const std::string& input, const std::string& output,
                               formats::DrawingUnit unit);

/// Whether z is lost in a drawing of these curves.
bool LosesHeights(const formats::Curves& curves, formats::DrawingFormat format);

}  // namespace host
