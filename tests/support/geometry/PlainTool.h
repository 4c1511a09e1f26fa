#pragma once

#include "formats/ToolpathRecords.h"
#include "support/geometry/Point.h"

namespace support {

/// A standard convex tool worked out the slow and plain way, to check faster code against: no code
/// in common with what it checks. Parameters must be valid.
class PlainTool {
 public:
  explicit PlainTool(const formats::ConvexTool& tool);

  /// Above 0 outside the tool, below 0 inside, 0 on its surface; convex; within a constant factor
  /// of the distance. `r`: distance from the axis, `z`: height above the tip.
  double Excess(double r, double z) const;

  /// The same for the tool moved in a straight line, its axis (a unit vector) keeping its
  /// direction.
  double SweptExcess(const Point& axis, const Point& from, const Point& to, const Point& p) const;

 private:
  struct Line {
    double normalR, normalZ, offset;  // outside where normal . p > offset
    double Excess(double r, double z) const { return normalR * r + normalZ * z - offset; }
  };
  struct Corner {
    double r, z, radius;  // the arc that rounds the corner of two lines
  };

  double RoundedCorner(const Line& below, const Line& above, const Corner& corner, double r,
                       double z) const;

  Line m_lower;
  Line m_wall;
  Line m_shank;
  Corner m_corner;
  Corner m_bevel;
  bool m_hasShank;
};

}  // namespace support
