// Notation: d diameter, where the lines of lower face and wall meet; r corner radius; (e, f) the
// corner's centre, e from the axis and f above the tip; a the lower face's angle from the
// horizontal; b the wall's from the axis; h the height. The face rises from the tip as z = x tan a.
// The corner touches it, so that f = (r + e sin a) / cos a, and the wall touches the corner, so
// that d/2 = e + r (1/cos b - tan b / cos a) / (1 - tan a tan b).
#include "formats/programs/AptCutter.h"

#include <cmath>
#include <string>

#include "formats/DecimalText.h"
#include "formats/programs/DegreeTrigonometry.h"
#include "formats/programs/GCodeError.h"
#include "formats/programs/ToolShape.h"

namespace formats {
namespace {

// Numbers of a program are rounded, those of tools generously.
constexpr double kRounding = 0.01;  // mm
constexpr std::size_t kMostNumbers = 7;

struct Cutter {
  double diameter = 0;
  double corner = 0;
  double centreFromAxis = 0;
  double centreHeight = 0;
  double lowerAngle = 0;
  double upperAngle = 0;
  double height = 0;
};

// How much wider the tool is, at the meeting of face and wall, than the corner's centre.
double BeyondCentre(const Cutter& cutter) {
  const SineCosine lower = SineCosineOfDegrees(cutter.lowerAngle);
  const SineCosine upper = SineCosineOfDegrees(cutter.upperAngle);
  const double lowerTangent = lower.sine / lower.cosine;
  const double upperTangent = upper.sine / upper.cosine;
  return cutter.corner * (1 / upper.cosine - upperTangent / lower.cosine) /
         (1 - lowerTangent * upperTangent);
}

void CheckAngles(const Cutter& cutter) {
  const bool sound = cutter.lowerAngle >= 0 && cutter.upperAngle >= 0 &&
                     cutter.lowerAngle + cutter.upperAngle < 90;
  if (!sound) {
    throw GCodeError("CUTTER whose angles are negative or make 90 degrees together", 0);
  }
}

void CheckDiameter(const Cutter& cutter, double millimetre) {
  const double radius = cutter.centreFromAxis + BeyondCentre(cutter);
  if (std::abs(cutter.diameter / 2 - radius) > kRounding * millimetre) {
    throw GCodeError(
        "CUTTER whose corner makes it " + DecimalText(2 * radius) + " wide, not its diameter", 0);
  }
}

// A centre height of 0 stands for one that is not given.
void CheckCentreHeight(const Cutter& cutter, double millimetre) {
  const SineCosine lower = SineCosineOfDegrees(cutter.lowerAngle);
  const double height = (cutter.corner + cutter.centreFromAxis * lower.sine) / lower.cosine;
  if (cutter.centreHeight != 0 && std::abs(cutter.centreHeight - height) > kRounding * millimetre) {
    throw GCodeError("CUTTER whose corner does not touch its lower face: the centre is " +
                         DecimalText(height) + " above the tip when it does",
                     0);
  }
}

Cutter CutterOf(const std::vector<double>& numbers) {
  if (numbers.empty() || numbers.size() > kMostNumbers) {
    throw GCodeError("CUTTER takes one to seven numbers", 0);
  }
  const auto at = [&](std::size_t index) { return index < numbers.size() ? numbers[index] : 0; };
  return {at(0), at(1), at(2), at(3), at(4), at(5), at(6)};
}

}  // namespace

ConvexTool ToolOfCutter(const std::vector<double>& numbers, double millimetre) {
  Cutter cutter = CutterOf(numbers);
  CheckAngles(cutter);
  // A third number alone is the centre's distance with some processors, the height with others; the
  // first two say the same without it. A square end may come without its centre.
  const bool centreGiven = numbers.size() > 3 && (cutter.centreFromAxis != 0 || cutter.corner != 0);
  if (centreGiven) {
    CheckDiameter(cutter, millimetre);
    CheckCentreHeight(cutter, millimetre);
  } else {
    cutter.centreFromAxis = cutter.diameter / 2 - BeyondCentre(cutter);
    // Half of a rounded diameter may miss the corner radius of a ball by a hair.
    if (std::abs(cutter.centreFromAxis) <= kRounding * millimetre && cutter.corner > 0) {
      cutter.centreFromAxis = 0;
    }
  }
  ConvexTool tool;
  tool.cornerRadius = cutter.corner;
  tool.flatRadius = cutter.centreFromAxis;
  tool.upperTaperAngle = cutter.upperAngle;
  tool.lowerTaperAngle = 90 - cutter.lowerAngle;
  // The height matters only where the wall leans: the tool does not widen beyond it.
  tool.taperHeight = cutter.upperAngle > 0 ? cutter.height : 0;
  if (const std::string fault = FaultOf(tool); !fault.empty()) {
    throw GCodeError("CUTTER makes no tool: " + fault, 0);
  }
  return tool;
}

}  // namespace formats
