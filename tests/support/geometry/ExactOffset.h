#pragma once

#include <optional>
#include <vector>

#include "formats/Mesh.h"
#include "support/geometry/MeshDistance.h"
#include "support/geometry/Point.h"
#include "support/geometry/RayWinding.h"

namespace support {

/// The boundary of all points within a distance of a surface, point by point; below 0, of a closed
/// surface, the part of it in the solid. Points are found by walking up the slope of the distance.
class ExactOffset {
 public:
  /// Keeps a reference to the surface. `distance` is not 0.
  ExactOffset(const formats::Mesh& surface, double distance);

  const formats::Mesh& Surface() const { return m_surface; }
  /// Of the surface's normals: 1 to where they point, -1 to the other side. An open surface has an
  /// offset on both.
  std::vector<double> Sides() const {
    return m_isClosed ? std::vector<double>{m_side} : std::vector<double>{1, -1};
  }

  /// The point of the exact offset that lies above a point on the surface, along the unit vector
  /// `way`, or on the crease that the walk comes to where another part of the band covers that.
  /// None when there is none or it lies on the wrong side.
  std::optional<Point> Above(const Point& foot, const Point& way) const;

  /// How far a point is from the exact offset at most. `outward`: a unit vector, one more way to
  /// begin the search.
  double Off(const Point& point, const Point& outward) const;

 private:
  Point SlopeAt(const Point& point, const MeshDistance::Nearest& nearest) const;
  std::optional<Point> WayOut(Point point, const Point& first) const;
  bool IsOnSide(const Point& point) const;

  const formats::Mesh& m_surface;
  MeshDistance m_distance;
  RayWinding m_winding;
  double m_radius, m_side;
  bool m_isClosed;
};

}  // namespace support
