#pragma once

#include <map>
#include <optional>
#include <string>

#include "formats/programs/AptArc.h"
#include "formats/programs/AptCycle.h"
#include "formats/programs/AptMoves.h"
#include "formats/programs/AptReport.h"
#include "formats/programs/AptStatement.h"
#include "formats/programs/GCodeProgram.h"
#include "formats/programs/LengthScale.h"

namespace formats {

// Runs cutter-location statements one by one. Positions are kept in the units of the output.
class AptInterpreter {
 public:
  // All three must outlive the interpreter.
  AptInterpreter(const GCodeOptions& options, AptMoves& moves, AptReport& report);

  // One statement; it begins in line report.lines at the latest. False when the program has ended.
  // Throws GCodeError.
  bool Run(const AptStatement& statement);

 private:
  struct Circle {
    ToolTip centre{};
    ToolAxis axis{};
    std::optional<double> radius;
  };
  struct Target {
    ToolTip tip{};
    ToolAxis axis{};
  };

  bool RunMotion(const AptStatement& statement);
  bool RunTool(const AptStatement& statement);
  bool RunState(const AptStatement& statement);

  void SetUnits(const AptStatement& statement);
  void SetMultax(const AptStatement& statement);
  void SetCycle(const AptStatement& statement);
  void SetCircle(const AptStatement& statement);
  void SetCutter(const AptStatement& statement);
  void LoadTool(const AptStatement& statement);
  void NotUnderstood(const std::string& name);
  void AddInsert(const AptStatement& statement);

  Target TargetOf(const AptStatement& statement) const;
  Target Shifted(const AptStatement& statement) const;
  void From(const Target& target);
  void GoTo(const Target& target);
  void GoRound(const Circle& circle, const Target& target);
  void Drill(const Target& hole);

  const ConvexTool& Cutter() const;
  bool InSpindle(Motion motion);
  void Place(const ToolTip& tip, Motion motion);
  ToolTip Scaled(double x, double y, double z) const { return {scale_(x), scale_(y), scale_(z)}; }

  const GCodeOptions& options_;
  AptMoves& moves_;
  AptReport& report_;
  LengthScale scale_;  // from the program's unit to that of the positions
  double millimetre_;  // in the units of the positions

  std::int32_t tool_ = 0;
  bool toolChanged_ = false;  // LOAD or CUTTER since the last motion
  bool cutterGiven_ = false;  // CUTTER since the last motion
  std::optional<ConvexTool> cutter_;
  std::map<std::int32_t, ConvexTool> cutters_;  // the last of each tool number

  std::optional<ToolTip> position_;
  bool connected_ = false;  // the next position is reached from the last one
  ToolAxis axis_ = kVerticalAxis;
  bool rapid_ = false;  // the next motion
  std::optional<Circle> circle_;
  std::optional<AptCycle> cycle_;
  std::optional<AptCycle> lastCycle_;
};

}  // namespace formats
