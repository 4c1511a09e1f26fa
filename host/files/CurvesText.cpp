#include "host/files/CurvesText.h"

#include <algorithm>

#include "host/files/NumberText.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kMostCurves = 30;

std::string CurveText(std::size_t number, const Json& curve, const std::string& units) {
  std::string text = "curve " + std::to_string(number) + ": ";
  if (!curve["inside"].is_null()) {
    text += (curve["hole"] == true ? "hole of curve " : "inside curve ") +
            NumberText(curve["inside"]) + ", ";
  }
  text += "points " + NumberText(curve["points"]);
  text += curve["clockwise"] == true ? ", clockwise" : ", counter-clockwise";
  text += ", length " + NumberText(curve["length"]) + " " + units;
  text += ", area " + NumberText(curve["area"]) + " " + units + "^2";
  if (curve["tree_fields"] != Json({0, 0})) {
    text += ", tree fields " + NumberText(curve["tree_fields"][0]) + " " +
            NumberText(curve["tree_fields"][1]);
  }
  return text;
}

}  // namespace

std::vector<std::string> CurvesText(const Json& d, const std::string& units) {
  const Json& curves = d["curves"];
  std::vector<std::string> lines;
  lines.push_back("curves " + std::to_string(curves.size()) + ", of these holes " +
                  NumberText(d["holes"]));
  if (curves.empty()) lines.emplace_back("empty: no closed curve");
  lines.push_back("points " + NumberText(d["points"]) + ", of these in no curve " +
                  NumberText(d["points_in_no_curve"]));
  lines.push_back("segments " + NumberText(d["segments"]) + ", in curves " +
                  NumberText(d["segments_in_curves"]));
  lines.push_back("box " + BoxText(d["box"]) + " " + units);
  lines.push_back("length " + NumberText(d["length"]) + " " + units);
  lines.push_back("area " + NumberText(d["area"]) + " " + units + "^2");
  if (d["non_finite_points"] != 0) {
    lines.push_back("points that are not finite " + NumberText(d["non_finite_points"]));
  }
  for (std::size_t i = 0; i < std::min(curves.size(), kMostCurves); ++i) {
    lines.push_back(CurveText(i + 1, curves[i], units));
  }
  if (curves.size() > kMostCurves) {
    lines.push_back("and " + std::to_string(curves.size() - kMostCurves) +
                    " more (--json lists them all)");
  }
  return lines;
}

}  // namespace host
