#pragma once

#include "formats/programs/AptMoves.h"
#include "formats/programs/GCodeArc.h"

namespace formats {

// An arc or helix about any axis, counter-clockwise as seen against it.
class AptArc {
 public:
  // `axis` of any length but 0; ends that coincide make a full circle. `millimetre`: its length in
  // the units of the positions. Throws GCodeError (column 0) when the distances of start and end
  // from the axis differ by more than a program's rounding.
  AptArc(const ToolTip& start, const ToolTip& end, const ToolTip& centre, const ToolAxis& axis,
         double millimetre);

  // Where the arc is after the share t of its sweep, 0 to 1.
  ToolTip At(double t) const;
  double Radius() const;  // at the start
  double Length() const { return arc_.Length(); }
  double Chords(double tolerance) const { return ChordsOf(arc_, tolerance); }

 private:
  ToolTip ToLocal(const ToolTip& point) const;

  ToolTip centre_;
  std::array<ToolAxis, 3> frame_;  // right-handed, the third is the axis
  GCodeArc arc_;                   // in that frame about its zero
};

}  // namespace formats
