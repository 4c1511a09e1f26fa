#pragma once

#include <array>
#include <cstdint>

namespace formats {

using ToolTip = std::array<double, 3>;  // x, y, z

enum class Motion { kRapid, kFeed };

// Takes what a program does, in its order. May throw GCodeError (column 0) for what it cannot take;
// the interpreter adds the line.
class GCodeMoves {
 public:
  virtual ~GCodeMoves() = default;

  // The tool is in the spindle from now on; 0: none. The next call for a position is Start.
  virtual void LoadTool(std::int32_t number) = 0;
  // The tool stands at `tip`; how it came there is not known. The motion is that of the move which
  // ended there.
  virtual void Start(const ToolTip& tip, Motion motion) = 0;
  // On a straight line from where it last stood.
  virtual void MoveTo(const ToolTip& tip, Motion motion) = 0;
};

}  // namespace formats
