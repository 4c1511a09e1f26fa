#include "formats/programs/GCodeCycle.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "formats/programs/GCodeError.h"

namespace formats {

void DrillHole(const DrillCycle& cycle, const ArcPlane& plane, const ToolTip& from,
               const ToolTip& hole, double mostPecks,
               const std::function<void(const ToolTip&, Motion)>& move) {
  if (cycle.bottom > cycle.retract) {
    throw GCodeError("canned cycle whose bottom is above its R level", 0);
  }
  if (cycle.peck > 0 && (cycle.retract - cycle.bottom) / cycle.peck > mostPecks) {
    throw GCodeError("canned cycle with too many pecks", 0);
  }
  const auto normal = static_cast<std::size_t>(plane.normal);
  const auto at = [&](const ToolTip& place, double level) {
    ToolTip tip = place;
    tip[normal] = level;
    return tip;
  };
  double level = from[normal];
  if (std::isnan(level)) {
    level = cycle.retract;
  } else if (level < cycle.retract) {
    level = cycle.retract;
    move(at(from, level), Motion::kRapid);
  }
  move(at(hole, level), Motion::kRapid);
  move(at(hole, cycle.retract), Motion::kRapid);
  if (cycle.peck > 0) {
    const double pecks = std::ceil((cycle.retract - cycle.bottom) / cycle.peck);
    const auto before = static_cast<std::int64_t>(pecks) - 1;  // the last one, to the bottom
    for (std::int64_t peck = 1; peck <= before; ++peck) {
      const double depth = cycle.retract - static_cast<double>(peck) * cycle.peck;
      move(at(hole, depth), Motion::kFeed);
      move(at(hole, cycle.retract), Motion::kRapid);
      move(at(hole, std::min(depth + cycle.pecking, cycle.retract)), Motion::kRapid);
    }
  }
  move(at(hole, cycle.bottom), Motion::kFeed);
  move(at(hole, cycle.clear), Motion::kRapid);
}

}  // namespace formats
