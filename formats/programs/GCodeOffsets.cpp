#include "formats/programs/GCodeOffsets.h"

namespace formats {

int OriginVariable(int system, int axis) {
  constexpr int kNumbersOfOneSystem = 20;
  return GCodeVariables::kSystems + kNumbersOfOneSystem * (system - 1) + axis;
}

int SystemInUse(const GCodeVariables& variables) {
  return static_cast<int>(variables.Get(GCodeVariables::kSystemInUse));
}

double OriginInUse(const GCodeVariables& variables, int axis) {
  return variables.Get(OriginVariable(SystemInUse(variables), axis));
}

double ShiftInUse(const GCodeVariables& variables, int axis) {
  return variables.Get(GCodeVariables::kShiftInUse) != 0
             ? variables.Get(GCodeVariables::kShift + axis)
             : 0;
}

double OffsetInUse(const GCodeVariables& variables, int axis) {
  return OriginInUse(variables, axis) + ShiftInUse(variables, axis);
}

void ShiftTo(GCodeVariables& variables, int axis, double position, double coordinate) {
  variables.Set(GCodeVariables::kShift + axis,
                position - coordinate - OriginInUse(variables, axis));
  variables.Set(GCodeVariables::kShiftInUse, 1);
}

void EndShift(GCodeVariables& variables, bool forget) {
  variables.Set(GCodeVariables::kShiftInUse, 0);
  if (forget) {
    for (int axis = 0; axis < 3; ++axis) {
      variables.Set(GCodeVariables::kShift + axis, 0);
    }
  }
}

void ResumeShift(GCodeVariables& variables) { variables.Set(GCodeVariables::kShiftInUse, 1); }

}  // namespace formats
