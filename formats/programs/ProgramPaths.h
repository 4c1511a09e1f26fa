#pragma once

#include <functional>
#include <optional>

#include "formats/ToolpathRecords.h"
#include "formats/programs/AptMoves.h"
#include "formats/programs/ToolTable.h"

namespace formats {

// Values that all paths of a job share; lengths in its units.
struct PathSettings {
  int colour = 1;                  // of tools without one of their own
  std::optional<int> rapidColour;  // given: rapids are paths of their own, in this colour
  double sweepToler = 0;
  double pathToler = 0;
  double compressToler = 0;
};

// One path of a program: all moves of one tool load that hang together.
struct ProgramPath {
  std::int64_t load = 0;  // 0, 1, ... in the order of the tool loads
  std::int32_t tool = 0;  // its number
  bool rapid = false;     // rapids only; never without a rapid colour
  std::string toolName;   // as the tool table has it
  PathRecord record;      // one cut; 5-axis when its tool is tilted anywhere
};

// Gathers a program's positions into paths. A path ends with its tool's load and wherever the next
// position is not reached from the last one; with a rapid colour also where rapids and feed moves
// meet. Each path is handed on as soon as it ends, so that memory holds one at a time.
class ProgramPaths : public AptMoves {
 public:
  using Take = std::function<void(ProgramPath)>;

  // The table must outlive the object.
  ProgramPaths(const ToolTable& tools, const PathSettings& settings, Take take);

  void LoadTool(std::int32_t number) override;  // throws GCodeError when the table lacks it
  void LoadTool(std::int32_t number, const TableTool& tool) override;
  bool HasTool(std::int32_t number) const override { return tools_.contains(number); }
  void SetAxis(const ToolAxis& axis) override { axis_ = axis; }
  void Start(const ToolTip& tip, Motion motion) override;
  void MoveTo(const ToolTip& tip, Motion motion) override;

  // After the last move.
  void Finish() { EndPath(); }

 private:
  bool IsRapidPath(Motion motion) const {
    return settings_.rapidColour && motion == Motion::kRapid;
  }
  void Load(std::int32_t number, const TableTool& tool);
  void EndPath();
  void Append(const ToolTip& tip);
  Cut TakeCut(bool tilted);

  const ToolTable& tools_;
  PathSettings settings_;
  Take take_;
  TableTool tool_;
  std::int32_t toolNumber_ = 0;
  std::int64_t load_ = -1;
  bool rapid_ = false;
  ToolAxis axis_ = kVerticalAxis;
  std::vector<double> positions_;
  std::vector<ToolAxis> axes_;  // of the positions, once one of them is tilted; else empty
};

}  // namespace formats
