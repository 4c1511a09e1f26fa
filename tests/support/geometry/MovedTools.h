#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

/// All that an upright ball, flat or bull nose cutter (axis +z, unbounded above) passes through on
/// straight moves, as distances: a cutter of corner radius c and flat radius f is all points within
/// c of the upward rays from a level disc of radius f, which stands c above the tip.
class MovedTools {
 public:
  MovedTools(double cornerRadius, double flatRadius);

  /// Tip positions of one cut; nothing is swept between two cuts.
  void AddCut(const std::vector<Point>& tips);

  /// Below 0 inside the union. Exact outside it and on its surface; on the inside, the distance to
  /// the surface of one of the moved tools, at most that to the union's. Points that no move comes
  /// within `margin` of, seen from above, are at infinity.
  double SignedDistance(const Point& point, double margin) const;

  /// Points on the union's surface: where it crosses the lines of a cubic grid in that box.
  std::vector<Point> SurfacePoints(const Point& low, const Point& high, double spacing) const;

 private:
  struct Move {
    Point from, to;
  };

  double DistanceAt(const Move& move, double share, const Point& point) const;
  double MoveDistance(const Move& move, const Point& point) const;
  double NearestBelow(const Point& point, double margin, double enough) const;

  double m_corner;
  double m_flat;
  std::vector<Move> m_moves;
};

/// The farthest that a vertex or facet centre of the facets of that colour lies from the surface
/// with the given signed distance; 0 when there are none.
double FarthestFromSurface(const formats::Mesh& mesh, std::uint8_t colour,
                           const std::function<double(const Point&)>& signedDistance);

/// The farthest that one of the points lies from the mesh.
double FarthestFromMesh(const std::vector<Point>& points, const formats::Mesh& mesh);

}  // namespace support
