#include "formats/programs/AptCycle.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

// Down to the depth and up again, in one go or in steps: what is left of the material is the same.
constexpr std::array<std::string_view, 11> kDrilling = {
    "DRILL", "SPOT", "FACE", "CSINK", "CBORE", "DEEP", "PECK", "BRKCHP", "BORE", "REAM", "TAP"};

// Words with one number that says nothing of the geometry.
constexpr std::array<std::string_view, 10> kWithNumber = {"MMPM", "IPM",  "MMPR", "IPR", "DWELL",
                                                          "STEP", "INCR", "RPM",  "REV", "CAM"};

template <typename Words>
bool Contains(const Words& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

ToolTip Above(const ToolTip& place, const ToolAxis& axis, double height) {
  return {place[0] + height * axis[0], place[1] + height * axis[1], place[2] + height * axis[2]};
}

double HeightAbove(const ToolTip& place, const ToolTip& tip, const ToolAxis& axis) {
  double height = 0;
  for (std::size_t i = 0; i < axis.size(); ++i) {
    height += (tip[i] - place[i]) * axis[i];
  }
  return height;
}

}  // namespace

bool IsDrilling(const AptStatement& statement) {
  return !statement.words.empty() && Contains(kDrilling, statement.words.front().text);
}

AptCycle CycleOf(const AptStatement& statement, const LengthScale& scale) {
  std::optional<double> depth;
  std::optional<double> clear;
  AptCycle cycle;
  std::string keyword;
  for (std::size_t i = 1; i < statement.words.size(); ++i) {
    const AptWord& word = statement.words[i];
    if (!word.isNumber) {
      keyword = word.text;
      continue;
    }
    const double length = scale(word.number);
    if (keyword == "FEDTO" || keyword == "DEPTH") {
      depth = length;
    } else if (keyword == "RAPTO" || keyword == "CLEAR") {
      clear = length;
    } else if (keyword == "RTRCTO" || keyword == "RETURN") {
      cycle.retract = length;
    } else if (!Contains(kWithNumber, keyword)) {
      (depth ? clear : depth) = length;
    }
    keyword.clear();
  }
  if (!depth) {
    throw GCodeError("CYCLE without a depth", 0);
  }
  cycle.depth = *depth;
  cycle.clear = clear.value_or(0);
  if (cycle.depth < -cycle.clear) {
    throw GCodeError("CYCLE whose bottom is above its clearance", 0);
  }
  return cycle;
}

void DrillAlongAxis(const AptCycle& cycle, const std::optional<ToolTip>& from, const ToolTip& hole,
                    const ToolAxis& axis, const std::function<void(const ToolTip&, Motion)>& move) {
  double level = cycle.clear;
  if (from) {
    const double height = HeightAbove(hole, *from, axis);
    if (height < cycle.clear) {
      move(Above(*from, axis, cycle.clear - height), Motion::kRapid);
    }
    level = std::max(height, cycle.clear);
  }
  move(Above(hole, axis, level), Motion::kRapid);
  move(Above(hole, axis, cycle.clear), Motion::kRapid);
  move(Above(hole, axis, -cycle.depth), Motion::kFeed);
  move(Above(hole, axis, cycle.retract.value_or(cycle.clear)), Motion::kRapid);
}

}  // namespace formats
