#pragma once

#include "formats/programs/GCodeVariables.h"

namespace formats {

// Where the zero of the coordinates in use lies: the origin of the system chosen by G54 to G59.3,
// and the shift of G92 on top. Both live in the program's variables (#5221 and on, #5211 and on),
// in the units of the positions. axis: 0 to 2.

// Number of the variable that holds a system's origin; system: 1 to 9.
int OriginVariable(int system, int axis);
int SystemInUse(const GCodeVariables& variables);
double OriginInUse(const GCodeVariables& variables, int axis);
double ShiftInUse(const GCodeVariables& variables, int axis);
double OffsetInUse(const GCodeVariables& variables, int axis);

// G92: from now on `position` is called `coordinate`.
void ShiftTo(GCodeVariables& variables, int axis, double position, double coordinate);
// G92.1 with `forget`, else G92.2; and G92.3.
void EndShift(GCodeVariables& variables, bool forget);
void ResumeShift(GCodeVariables& variables);

}  // namespace formats
