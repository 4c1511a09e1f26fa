#pragma once

#include <istream>
#include <string>

#include "formats/programs/AptMoves.h"
#include "formats/programs/AptReport.h"
#include "formats/programs/GCodeProgram.h"

namespace formats {

// Runs a program in APT cutter-location text (docs/apt.md says what is understood) and hands its
// positions to `moves`. Of the options firstTool has no meaning here. Throws FileError with the
// line in which the statement ends.
AptReport RunAptFile(const std::string& path, const GCodeOptions& options, AptMoves& moves);

// The same for a program from elsewhere; `name` stands for the file in messages.
AptReport RunApt(std::istream& program, const std::string& name, const GCodeOptions& options,
                 AptMoves& moves);

}  // namespace formats
