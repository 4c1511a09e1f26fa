#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "host/files/DescribeFile.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

Json Describe(const formats::ConvexTool& tool) {
  return {{"type", "convex"},
          {"corner_radius", tool.cornerRadius},
          {"flat_radius", tool.flatRadius},
          {"upper_taper_angle", tool.upperTaperAngle},
          {"lower_taper_angle", tool.lowerTaperAngle},
          {"taper_height", tool.taperHeight},
          {"upper_bevel_radius", tool.upperBevelRadius}};
}

Json Describe(const formats::UndercutTool& tool) {
  Json description = {
      {"type", "undercut"}, {"arm_radius", tool.armRadius}, {"arm_height", tool.armHeight}};
  if (tool.useFlip) description["flip"] = Describe(tool.flip);
  if (tool.useRegular) description["regular"] = Describe(tool.regular);
  return description;
}

Json Describe(const formats::CustomTool& tool) {
  Json description = {{"type", "custom"}, {"arcs", Json::array()}, {"lines", Json::array()}};
  for (const formats::ArcPiece& arc : tool.arcs) {
    description["arcs"].push_back({{"index", arc.index},
                                   {"radius", arc.radius},
                                   {"angle_min", arc.angleMin},
                                   {"angle_max", arc.angleMax},
                                   {"flat_length", arc.flatLength},
                                   {"flip", arc.flip},
                                   {"convex", arc.convex}});
  }
  for (const formats::LinePiece& line : tool.lines) {
    description["lines"].push_back({{"index", line.index},
                                    {"height", line.height},
                                    {"taper_angle", line.taperAngle},
                                    {"flat_length", line.flatLength},
                                    {"flip", line.flip}});
  }
  return description;
}

// What the tip does along all the cuts. Positions that are not finite are counted and left out.
struct Travel {
  size_t positions = 0;
  size_t moves = 0;
  size_t nonFinite = 0;
  double length = 0.0;
  std::optional<std::array<std::array<double, 3>, 2>> box;
};

void AddToBox(const double* tip, Travel& travel) {
  if (!travel.box) travel.box = {{{tip[0], tip[1], tip[2]}, {tip[0], tip[1], tip[2]}}};
  for (size_t axis = 0; axis < 3; ++axis) {
    (*travel.box)[0][axis] = std::min((*travel.box)[0][axis], tip[axis]);
    (*travel.box)[1][axis] = std::max((*travel.box)[1][axis], tip[axis]);
  }
}

void AddCut(const std::vector<double>& coordinates, size_t stride, Travel& travel) {
  const double* previous = nullptr;
  const size_t count = coordinates.size() / stride;
  travel.positions += count;
  if (count > 0) travel.moves += count - 1;
  for (size_t i = 0; i < count; ++i) {
    const double* position = coordinates.data() + i * stride;
    if (!std::all_of(position, position + stride, [](double x) { return std::isfinite(x); })) {
      ++travel.nonFinite;
      previous = nullptr;
      continue;
    }
    AddToBox(position, travel);
    if (previous != nullptr) {
      travel.length += std::hypot(position[0] - previous[0], position[1] - previous[1],
                                  position[2] - previous[2]);
    }
    previous = position;
  }
}

}  // namespace

Json DescribePath(const formats::PathRecord& record) {
  const size_t stride = formats::DoublesPerPosition(record.pathType);
  Travel travel;
  for (const formats::Cut& cut : record.cuts) AddCut(cut.coordinates, stride, travel);
  Json description = {{"axes", record.pathType == 1 ? 3 : 5},
                      {"colour", record.colour},
                      {"sweep_tolerance", record.sweepToler},
                      {"path_tolerance", record.pathToler},
                      {"compress_tolerance", record.compressToler},
                      {"matrix", record.matrix},
                      {"origin", record.origin}};
  description["tool"] = std::visit([](const auto& tool) { return Describe(tool); }, record.tool);
  description["cuts"] = record.cuts.size();
  description["positions"] = travel.positions;
  description["moves"] = travel.moves;
  description["length"] = travel.length;
  description["box"] = nullptr;
  if (travel.box) {
    description["box"] = {{"lower", (*travel.box)[0]}, {"upper", (*travel.box)[1]}};
  }
  description["non_finite_positions"] = travel.nonFinite;
  return description;
}

}  // namespace host
