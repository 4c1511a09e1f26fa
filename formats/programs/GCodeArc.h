#pragma once

#include "formats/programs/GCodeMoves.h"

namespace formats {

// The two axes that an arc turns in, first towards second counter-clockwise as seen against the
// third. Axis numbers: 0 x, 1 y, 2 z.
struct ArcPlane {
  int first;
  int second;
  int normal;
};

constexpr ArcPlane kPlaneXY = {0, 1, 2};
constexpr ArcPlane kPlaneZX = {2, 0, 1};
constexpr ArcPlane kPlaneYZ = {1, 2, 0};

// A helix (an arc when it does not climb) from start to end about an axis through the centre.
struct GCodeArc {
  ArcPlane plane = kPlaneXY;
  ToolTip start{};
  ToolTip end{};
  double centreFirst = 0;
  double centreSecond = 0;
  double sweep = 0;  // radians, counter-clockwise positive; never 0

  // Where the arc is after the share t of its sweep, 0 to 1. The radius goes evenly from that of
  // the start to that of the end where a program's rounding makes them differ.
  ToolTip At(double t) const;
  double Length() const;
};

// Centre given. `turns`: 1 is up to one turn, each one more a full turn more. Ends that coincide
// within `nothing` make a full circle. Throws GCodeError (column 0) when the two radii differ by
// more than 0.5 mm, or by more than 0.005 mm and a thousandth; `millimetre`: its length in the
// units of the positions.
GCodeArc ArcAboutCentre(const ArcPlane& plane, const ToolTip& start, const ToolTip& end,
                        double centreFirst, double centreSecond, bool clockwise, int turns,
                        double millimetre);

// Radius given: positive for the arc of half a turn at most, negative for the other. Throws
// GCodeError (column 0) when the ends coincide or lie further apart than the diameter.
GCodeArc ArcOfRadius(const ArcPlane& plane, const ToolTip& start, const ToolTip& end, double radius,
                     bool clockwise, int turns, double millimetre);

// Chords, evenly spaced, of which none strays from the arc by more than the tolerance (> 0); as a
// double, since a tolerance may ask for more than any integer holds.
double ChordsOf(const GCodeArc& arc, double tolerance);

}  // namespace formats
