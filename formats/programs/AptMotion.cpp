// The motions of the interpreter: straight, round, into holes.
#include <cmath>
#include <utility>
#include <variant>

#include "formats/DecimalText.h"
#include "formats/programs/AptInterpreter.h"
#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

// What one statement may ask for, so that a slip of the finger does not fill the memory.
constexpr double kMostChords = 1'000'000;
constexpr double kRadiusRounding = 0.5;  // mm: how far a radius that is given may be off

double Distance(const ToolTip& a, const ToolTip& b) {
  double sum = 0;
  for (std::size_t axis = 0; axis < a.size(); ++axis) {
    sum += (a[axis] - b[axis]) * (a[axis] - b[axis]);
  }
  return std::sqrt(sum);
}

ToolAxis Normalised(const ToolAxis& axis) {
  const double length = std::sqrt(axis[0] * axis[0] + axis[1] * axis[1] + axis[2] * axis[2]);
  if (!(length > 0) || !std::isfinite(length)) {
    throw GCodeError("tool vector without a direction", 0);
  }
  return {axis[0] / length, axis[1] / length, axis[2] / length};
}

void CheckFinite(const ToolTip& tip) {
  for (const double coordinate : tip) {
    if (!std::isfinite(coordinate)) {
      throw GCodeError("coordinate too large", 0);
    }
  }
}

}  // namespace

AptInterpreter::Target AptInterpreter::TargetOf(const AptStatement& statement) const {
  const std::vector<double> numbers = NumbersOf(statement);
  if (numbers.size() != 3 && numbers.size() != 6) {
    throw GCodeError(statement.major + " takes three numbers, or six with a tool vector", 0);
  }
  Target target{Scaled(numbers[0], numbers[1], numbers[2]), axis_};
  CheckFinite(target.tip);
  if (numbers.size() == 6) {
    target.axis = Normalised({numbers[3], numbers[4], numbers[5]});
  }
  return target;
}

AptInterpreter::Target AptInterpreter::Shifted(const AptStatement& statement) const {
  const std::vector<double> numbers = NumbersOf(statement);
  if (numbers.size() != 3) {
    throw GCodeError("GODLTA takes three numbers", 0);
  }
  if (!position_) {
    throw GCodeError("GODLTA from a position that is not known", 0);
  }
  Target target{Scaled(numbers[0], numbers[1], numbers[2]), axis_};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    target.tip[axis] += (*position_)[axis];
  }
  CheckFinite(target.tip);
  return target;
}

void AptInterpreter::From(const Target& target) {
  position_ = target.tip;
  axis_ = target.axis;
  circle_.reset();
  rapid_ = false;
  // Where the tool begins: no move leads there.
  connected_ = false;
  if (InSpindle(Motion::kRapid)) {
    Place(target.tip, Motion::kRapid);
  }
}

void AptInterpreter::GoTo(const Target& target) {
  const Motion motion = rapid_ ? Motion::kRapid : Motion::kFeed;
  const std::optional<Circle> circle = std::exchange(circle_, std::nullopt);
  rapid_ = false;
  if (cycle_) {
    axis_ = target.axis;
    Drill(target);
  } else if (circle) {
    GoRound(*circle, target);
  } else if (InSpindle(motion)) {
    axis_ = target.axis;
    Place(target.tip, motion);
  }
  axis_ = target.axis;
  if (!cycle_) {
    position_ = target.tip;
  }
}

void AptInterpreter::GoRound(const Circle& circle, const Target& target) {
  if (!position_) {
    throw GCodeError("CIRCLE from a position that is not known", 0);
  }
  if (!InSpindle(Motion::kFeed)) {
    return;
  }
  const AptArc arc(*position_, target.tip, circle.centre, circle.axis, millimetre_);
  if (circle.radius && std::abs(*circle.radius - arc.Radius()) > kRadiusRounding * millimetre_) {
    throw GCodeError("CIRCLE whose radius is " + DecimalText(*circle.radius) +
                         " but whose start is " + DecimalText(arc.Radius()) + " from its centre",
                     0);
  }
  const double wanted = arc.Chords(options_.arcTolerance);
  if (!(wanted <= kMostChords)) {
    throw GCodeError("CIRCLE that would take more than a million chords", 0);
  }
  const auto chords = static_cast<std::int64_t>(wanted);
  if (!connected_) {
    moves_.SetAxis(axis_);
    moves_.Start(*position_, Motion::kFeed);
    report_.AddPosition(*position_);
    connected_ = true;
  }
  moves_.SetAxis(target.axis);
  for (std::int64_t i = 1; i <= chords; ++i) {
    const ToolTip tip =
        i == chords ? target.tip : arc.At(static_cast<double>(i) / static_cast<double>(chords));
    report_.AddPosition(tip);
    moves_.MoveTo(tip, Motion::kFeed);
  }
  ++report_.arcs;
  report_.chords += chords;
  report_.feedLength += arc.Length();
}

void AptInterpreter::Drill(const Target& hole) {
  if (!InSpindle(Motion::kFeed)) {
    return;
  }
  ++report_.holes;
  const std::optional<ToolTip> from = connected_ ? position_ : std::nullopt;
  DrillAlongAxis(*cycle_, from, hole.tip, hole.axis, [this](const ToolTip& tip, Motion motion) {
    CheckFinite(tip);
    Place(tip, motion);
    position_ = tip;
  });
}

// The tool that cuts now: what CUTTER has said of it, or had said when it was last loaded.
const ConvexTool& AptInterpreter::Cutter() const {
  if (!cutterGiven_) {
    const auto seen = cutters_.find(tool_);
    if (seen != cutters_.end()) {
      return seen->second;
    }
  }
  if (!cutterGiven_ || !cutter_) {
    throw GCodeError("tool " + std::to_string(tool_) + " moves, but no CUTTER has said what it is",
                     0);
  }
  return *cutter_;
}

// Counts a move and says whether a tool makes it.
bool AptInterpreter::InSpindle(Motion motion) {
  if (toolChanged_) {
    // The table of tools, when there is one, has the last word on what a number is.
    const bool inTable = moves_.HasTool(tool_);
    TableTool tool;
    if (!inTable) {
      tool.tool = Cutter();
      cutters_[tool_] = std::get<ConvexTool>(tool.tool);
    }
    moves_.LoadTool(tool_, tool);
    ++report_.toolLoads;
    toolChanged_ = false;
    cutterGiven_ = false;
    connected_ = false;
    return true;
  }
  if (report_.toolLoads > 0) {
    return true;
  }
  if (motion == Motion::kFeed) {
    throw GCodeError("feed move before any LOAD or CUTTER", 0);
  }
  ++report_.withoutTool;
  return false;
}

// The tool is at `tip` next, its axis as it is now.
void AptInterpreter::Place(const ToolTip& tip, Motion motion) {
  ++(motion == Motion::kRapid ? report_.rapids : report_.feeds);
  report_.AddPosition(tip);
  moves_.SetAxis(axis_);
  if (!connected_) {
    moves_.Start(tip, motion);
    connected_ = true;
    return;
  }
  (motion == Motion::kRapid ? report_.rapidLength : report_.feedLength) +=
      Distance(*position_, tip);
  moves_.MoveTo(tip, motion);
}

}  // namespace formats
