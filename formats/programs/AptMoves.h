#pragma once

#include "formats/programs/GCodeMoves.h"
#include "formats/programs/ToolTable.h"

namespace formats {

using ToolAxis = std::array<double, 3>;  // i, j, k: of length 1, from the tip to the holder

inline constexpr ToolAxis kVerticalAxis = {0, 0, 1};

// Takes what a program does that brings its tools along and may tilt them. May throw GCodeError as
// GCodeMoves does.
class AptMoves : public GCodeMoves {
 public:
  // The tool is in the spindle from now on. The next call for a position is Start.
  virtual void LoadTool(std::int32_t number, const TableTool& tool) = 0;
  // Whether the tool of that number is known already; LoadTool then takes that one.
  virtual bool HasTool(std::int32_t number) const = 0;
  // The axis at the positions from the next one on; vertical until the first call.
  virtual void SetAxis(const ToolAxis& axis) = 0;

  using GCodeMoves::LoadTool;
};

}  // namespace formats
