#pragma once

#include <functional>
#include <optional>

#include "formats/programs/AptMoves.h"
#include "formats/programs/AptStatement.h"
#include "formats/programs/LengthScale.h"

namespace formats {

// A drilling cycle in force. Heights count along the tool axis from the position that a GOTO gives.
struct AptCycle {
  double depth = 0;               // FEDTO: how far below
  double clear = 0;               // RAPTO: down to here in rapid
  std::optional<double> retract;  // RTRCTO: where the tool is left, else at `clear`
};

// True for CYCLE/DRILL and the other kinds that leave what drilling leaves.
bool IsDrilling(const AptStatement& statement);

// The cycle of such a statement, lengths turned by `scale`. Throws GCodeError when it has no depth.
AptCycle CycleOf(const AptStatement& statement, const LengthScale& scale);

// The moves of one hole, the first of them from `from` when it is known.
void DrillAlongAxis(const AptCycle& cycle, const std::optional<ToolTip>& from, const ToolTip& hole,
                    const ToolAxis& axis, const std::function<void(const ToolTip&, Motion)>& move);

}  // namespace formats
