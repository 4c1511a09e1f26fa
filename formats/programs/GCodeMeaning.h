#pragma once

#include <string>

namespace formats {

// Codes of one group exclude each other within a line.
enum class GCodeGroup {
  kMotion,
  kPlane,
  kUnits,
  kDistance,
  kArcDistance,
  kRetract,
  kCoordinateSystem,
  kToolLength,
  kCutterSide,
  kFeedMode,
  kPathControl,
  kOneLine,  // counts for its line only
  kMachineCoordinates,
  kCount
};

enum class GCodeSupport {
  kYes,     // understood, or without effect on where the tool goes
  kMotion,  // a motion that is not understood: where it ends is not known
  kNo       // anything else that is not understood
};

struct GCodeMeaning {
  GCodeGroup group;
  GCodeSupport support;
};

// Numbers in tenths. A number that no table has counts as one of its line, not understood.
GCodeMeaning MeaningOfG(int tenths);
bool UnderstandsM(int tenths);

// "G90.1"
std::string GCodeName(char letter, int tenths);

}  // namespace formats
