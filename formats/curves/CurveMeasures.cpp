#include "formats/curves/CurveMeasures.h"

#include <algorithm>
#include <cmath>

#include "formats/curves/NestCurves.h"

namespace formats {
namespace {

using Point = std::array<double, 3>;

bool IsFinite(const Point& point) {
  return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

void Include(std::optional<Box>& box, const Point& point) {
  if (!IsFinite(point)) return;
  if (!box) box = Box{point, point};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    box->lower[axis] = std::min(box->lower[axis], point[axis]);
    box->upper[axis] = std::max(box->upper[axis], point[axis]);
  }
}

CurveMeasures MeasureCurve(const Curves& curves, const Curve& curve) {
  CurveMeasures measures;
  const auto place = [&](std::size_t i) -> const Point& {
    return curves.points[static_cast<std::size_t>(curve.points[i])];
  };
  // Areas are taken about a point of the curve: far from the origin they would lose their digits.
  const Point& origin = place(0);
  const std::size_t count = curve.points.size();
  for (std::size_t i = 0; i < count; ++i) {
    const Point& a = place(i);
    const Point& b = place(i + 1 == count ? 0 : i + 1);
    measures.length += std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
    measures.area +=
        0.5 * ((a[0] - origin[0]) * (b[1] - origin[1]) - (a[1] - origin[1]) * (b[0] - origin[0]));
  }
  return measures;
}

}  // namespace

CurvesMeasures MeasureCurves(const Curves& curves) {
  CurvesMeasures all;
  for (const Curve& curve : curves.curves) {
    all.curves.push_back(MeasureCurve(curves, curve));
    all.length += all.curves.back().length;
    all.pointsInCurves += curve.points.size();
  }
  all.box = BoxOf(curves);
  all.nonFinitePoints =
      static_cast<std::size_t>(std::count_if(curves.points.begin(), curves.points.end(),
                                             [](const Point& point) { return !IsFinite(point); }));
  NestCurves(curves, all.curves);
  for (const CurveMeasures& curve : all.curves) {
    all.holes += curve.IsHole() ? 1 : 0;
    all.area += curve.IsHole() ? -std::abs(curve.area) : std::abs(curve.area);
  }
  return all;
}

std::optional<Box> BoxOf(const Curves& curves) {
  std::optional<Box> box;
  for (const Curve& curve : curves.curves) {
    for (const std::int32_t point : curve.points) {
      Include(box, curves.points[static_cast<std::size_t>(point)]);
    }
  }
  return box;
}

}  // namespace formats
