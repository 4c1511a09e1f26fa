#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "formats/programs/GCodeArc.h"
#include "formats/programs/GCodeLine.h"
#include "formats/programs/GCodeMeaning.h"
#include "formats/programs/GCodeMoves.h"
#include "formats/programs/GCodeProgram.h"
#include "formats/programs/GCodeReport.h"
#include "formats/programs/GCodeVariables.h"
#include "formats/programs/LengthScale.h"

namespace formats {

// The state of a machine that runs a program line by line, in the order of effects that RS-274 lays
// down. Positions are kept without offsets in the units of the output; an axis whose position is
// not known is NaN.
class GCodeInterpreter {
 public:
  // All three must outlive the interpreter.
  GCodeInterpreter(const GCodeOptions& options, GCodeMoves& moves, GCodeReport& report);

  // Before the first line: loads the tool that is in the spindle from the start.
  void Begin();

  // One line, report.lines its number. False when the program has ended. Throws GCodeError.
  bool Run(std::string_view line);

 private:
  enum class Mode {
    kNone,
    kRapid,
    kLine,
    kClockwise,
    kCounterClockwise,
    kDrill,
    kPeckDrill,
    kNotUnderstood
  };
  // A line's codes, one a group; -1: none.
  using Codes = std::array<int, static_cast<std::size_t>(GCodeGroup::kCount)>;

  bool Execute(const GCodeBlock& block);
  void Assign(const GCodeBlock& block);
  void PublishPosition();

  void SortCodes(const GCodeBlock& block);
  void NotUnderstood(const std::string& word, int column);
  void CheckLetters(const GCodeBlock& block);
  int Code(GCodeGroup group) const { return codes_[static_cast<std::size_t>(group)]; }

  void ChangeTool(const GCodeBlock& block);
  void LoadTool(std::int32_t number);
  void SetModes();
  void SetMotion();

  // True when the line's axis words belong to something else than the motion in force.
  bool TakesAxisWords(const GCodeBlock& block);
  void SetOffsets(const GCodeBlock& block);
  void SetOrigin(const GCodeBlock& block);
  double KnownPosition(const GCodeBlock& block, char letter) const;
  void GoHome(const GCodeBlock& block);
  void Shift(const GCodeBlock& block);

  void Move(const GCodeBlock& block);
  void MoveStraight(const ToolTip& target, Motion motion);
  void MoveOnArc(const GCodeBlock& block, const ToolTip& target);
  GCodeArc ArcOf(const GCodeBlock& block, const ToolTip& target) const;
  void Drill(const GCodeBlock& block);
  void KeepCycleWords(const GCodeBlock& block);

  ToolTip Target(const GCodeBlock& block) const;
  bool HasAxisWords(const GCodeBlock& block) const;
  void Forget(const GCodeBlock& block);
  bool InSpindle(Motion motion);
  void Place(const ToolTip& tip, Motion motion);

  const GCodeOptions& options_;
  GCodeMoves& moves_;
  GCodeReport& report_;
  GCodeVariables variables_;
  GCodeText text_;
  GCodeBlock block_;

  Codes codes_{};
  bool unknownTakesAxisWords_ = false;
  bool motionGiven_ = false;
  bool openedByPercent_ = false;
  bool anyLine_ = false;

  Mode mode_ = Mode::kNone;
  ArcPlane plane_ = kPlaneXY;
  LengthScale scale_;  // from a program's unit to that of the positions
  double millimetre_;  // in the units of the positions
  bool incremental_ = false;
  bool absoluteCentres_ = false;
  bool retractToInitial_ = true;
  std::int32_t tool_ = 0;
  std::optional<std::int32_t> selectedTool_;

  ToolTip position_;
  bool connected_ = false;  // the next position is reached from the last one

  // Words of a canned cycle that count until the cycle ends, in the units of the positions.
  std::optional<double> cycleRetract_;
  std::optional<double> cycleBottom_;
  std::optional<double> cyclePeck_;
  double initialLevel_;
};

}  // namespace formats
