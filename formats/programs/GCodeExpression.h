#pragma once

#include <string_view>

#include "formats/programs/GCodeCursor.h"
#include "formats/programs/GCodeVariables.h"

namespace formats {

// A value as it may follow a letter, "=" or "#": a number, #n, #<name>, a function, or an
// expression in brackets; the grammar and the meaning of LinuxCNC (docs/gcode.md). Angles are in
// degrees. Throws GCodeError at the place of the fault; never returns NaN or infinity.
double ReadGCodeValue(GCodeCursor& cursor, const GCodeVariables& variables);

// What follows "#" as a number: throws unless it is the number of a variable.
int ReadGCodeVariableNumber(GCodeCursor& cursor, const GCodeVariables& variables);

// The name in "<name>"; the cursor is on "<".
std::string_view ReadGCodeName(GCodeCursor& cursor);

}  // namespace formats
