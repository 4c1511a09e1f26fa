#pragma once

#include <functional>

#include "formats/programs/GCodeArc.h"
#include "formats/programs/GCodeMoves.h"

namespace formats {

// One hole of G81, G82 or G83 (a dwell moves nothing, so the first two are one). Levels are
// positions on the plane's normal axis.
struct DrillCycle {
  double retract = 0;  // R: down to here in rapid
  double bottom = 0;
  double clear = 0;    // where the tool is left
  double peck = 0;     // G83: how deep at a time; 0: in one go
  double pecking = 0;  // G83: how far above the last depth the rapid back down ends
};

// The hole's moves from `from` on; its coordinate on the normal axis may be NaN (not known), then
// the hole begins at the retract level above it. Throws GCodeError (column 0) for a bottom above
// the retract level and for more pecks than `mostPecks`.
void DrillHole(const DrillCycle& cycle, const ArcPlane& plane, const ToolTip& from,
               const ToolTip& hole, double mostPecks,
               const std::function<void(const ToolTip&, Motion)>& move);

}  // namespace formats
