#pragma once

#include <vector>

#include "kernel/common/Vec3.h"
#include "kernel/sweep/ExactOrientation.h"

namespace kernel {

// A place when it is spun about the x axis: along the axis, and away from it.
Point2 Spun(const Vec3& place);

// What a straight edge covers when it is spun about the x axis: r over x is an arc of a hyperbola,
// open upwards, or straight where the edge crosses the axis or runs along or square to it.
//
// Notation: t from 0 to 1 along the edge, u the way along it as seen along the axis, from its
// point nearest to the axis; there r is the least radius: r^2 = u^2 + least^2. With u = least sinh
// a, r = least cosh a an arc is halved where a is.
class SpunArc {
 public:
  SpunArc(const Vec3& from, const Vec3& to);

  Point2 At(double t) const;
  Vec3 PlaceAt(double t) const;

  // Appends straight pieces from At(begin) to At(end), both included, begin < end, nowhere further
  // than `tolerance` from the arc: nowhere below it, through points of the arc, or nowhere above
  // it, along tangents.
  void AddPieces(double begin, double end, bool below, double tolerance,
                 std::vector<Point2>& points) const;

 private:
  struct ArcPoint {
    double u, r;
  };

  ArcPoint ArcPointAt(double t) const;
  Point2 PlaneAt(const ArcPoint& point) const;
  void AddHalf(double begin, double end, bool below, double tolerance,
               std::vector<Point2>& points) const;
  void Divide(const ArcPoint& a, const ArcPoint& b, bool below, double tolerance, int depth,
              std::vector<Point2>& points) const;

  Vec3 m_from, m_to;
  double m_speed;    // how fast u grows with t
  double m_nearest;  // t of the point nearest to the axis, on the edge or beyond its ends
  double m_least;    // that point's radius
};

}  // namespace kernel
