#include "formats/curves/SvgFile.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "formats/FileError.h"
#include "formats/TextBuilder.h"
#include "formats/curves/CurveMeasures.h"

namespace formats {
namespace {

constexpr double marginShare = 0.02;
constexpr double strokeShare = 0.002;

// What the drawing shows, with y pointing down as in the file.
struct View {
  double left = 0, top = 0, width = 0, height = 0;
  double stroke = 0;
};

View ViewOf(const Curves& curves) {
  View view;
  const std::optional<Box> box = BoxOf(curves);
  if (box) {
    view.left = box->lower[0];
    view.top = 0 - box->upper[1];
    view.width = box->upper[0] - box->lower[0];
    view.height = box->upper[1] - box->lower[1];
  }
  // A view of no size would show nothing at all.
  double extent = std::max(view.width, view.height);
  if (!(extent > 0)) extent = 1;
  view.stroke = strokeShare * extent;
  const double margin = marginShare * extent;
  view.left -= margin;
  view.top -= margin;
  view.width += 2 * margin;
  view.height += 2 * margin;
  return view;
}

void WriteCurve(TextBuilder& text, const Curves& curves, const Curve& curve) {
  char command = 'M';
  for (const std::int32_t number : curve.points) {
    const auto& point = curves.points[static_cast<std::size_t>(number)];
    // Taken from 0 so that no 0 becomes -0.
    text.Add(std::string_view(&command, 1), point[0], " ", 0 - point[1]);
    command = 'L';
  }
  text.Add("Z\n");
}

}  // namespace

void WriteSvg(const std::string& path, const Curves& curves, DrawingUnit unit) {
  const std::string_view unitName = unit == DrawingUnit::Inch ? "in" : "mm";
  const View view = ViewOf(curves);
  if (!std::isfinite(view.width) || !std::isfinite(view.height)) {
    throw FileError(path + ": the curves are too large to be drawn");
  }
  TextBuilder text(path);
  text.Add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  text.Add("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"", view.width, unitName,
           "\" height=\"", view.height, unitName, "\" viewBox=\"", view.left, " ", view.top, " ",
           view.width, " ", view.height, "\">\n");
  text.Add("<path fill=\"#c8d0d8\" fill-rule=\"evenodd\" stroke=\"#000000\" stroke-width=\"",
           view.stroke, "\" stroke-linejoin=\"round\" d=\"\n");
  for (const Curve& curve : curves.curves) WriteCurve(text, curves, curve);
  text.Add("\"/>\n</svg>\n");
  text.Finish();
}

}  // namespace formats
