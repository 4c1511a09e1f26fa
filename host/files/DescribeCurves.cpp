#include "formats/curves/CurveMeasures.h"
#include "formats/curves/CurvesFile.h"
#include "host/files/DescribeFile.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

// Curves count from 1, as people do.
Json Number(const std::optional<std::size_t>& curve) {
  return curve ? Json(*curve + 1) : Json(nullptr);
}

Json DescribeCurve(const formats::Curve& curve, const formats::CurveMeasures& measures) {
  return {{"points", curve.points.size()},
          {"clockwise", measures.area < 0},
          {"length", measures.length},
          {"area", measures.area},
          {"depth", measures.depth},
          {"hole", measures.IsHole()},
          {"inside", Number(measures.outside)},
          {"tree_fields", curve.treeFields}};
}

std::size_t PointsInNoCurve(const formats::Curves& curves) {
  std::vector<bool> used(curves.points.size(), false);
  std::size_t unused = curves.points.size();
  for (const formats::Curve& curve : curves.curves) {
    for (const std::int32_t number : curve.points) {
      const auto point = static_cast<std::size_t>(number);
      if (!used[point]) --unused;
      used[point] = true;
    }
  }
  return unused;
}

}  // namespace

Json DescribeCurves(const formats::Curves& curves) {
  const formats::CurvesMeasures measures = formats::MeasureCurves(curves);
  Json description = {{"variant", formats::NameOf(curves.variant)},
                      {"points", curves.points.size()},
                      {"points_in_no_curve", PointsInNoCurve(curves)},
                      {"non_finite_points", measures.nonFinitePoints},
                      {"segments", curves.segments},
                      {"segments_in_curves", measures.pointsInCurves},
                      {"holes", measures.holes},
                      {"length", measures.length},
                      {"area", measures.area},
                      {"box", nullptr}};
  if (measures.box) {
    description["box"] = {{"lower", measures.box->lower}, {"upper", measures.box->upper}};
  }
  description["curves"] = Json::array();
  for (std::size_t i = 0; i < curves.curves.size(); ++i) {
    description["curves"].push_back(DescribeCurve(curves.curves[i], measures.curves[i]));
  }
  return description;
}

}  // namespace host
