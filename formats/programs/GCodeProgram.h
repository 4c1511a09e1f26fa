#pragma once

#include <istream>
#include <string>

#include "formats/programs/GCodeMoves.h"
#include "formats/programs/GCodeReport.h"

namespace formats {

struct GCodeOptions {
  bool metric = true;          // positions, and a program without G20 and G21, are in millimetres
  double arcTolerance = 0.01;  // > 0: how far a chord may stray from its arc
  std::int32_t firstTool = 0;  // in the spindle at the start; 0: none
  bool strict = false;         // a word that is not understood is an error
};

// Runs a program (docs/gcode.md says what is understood) and hands its positions to `moves`.
// Throws FileError with line and column.
GCodeReport RunGCodeFile(const std::string& path, const GCodeOptions& options, GCodeMoves& moves);

// The same for a program from elsewhere; `name` stands for the file in messages.
GCodeReport RunGCode(std::istream& program, const std::string& name, const GCodeOptions& options,
                     GCodeMoves& moves);

}  // namespace formats
