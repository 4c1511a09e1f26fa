#include "support/geometry/ExactOffset.h"

#include <algorithm>
#include <cmath>

#include "support/geometry/MeshChecks.h"

namespace support {
namespace {

// A walk that has gone on for so many radii is not about the place that it began at any more.
constexpr double kMostRadii = 3;
constexpr int kMostSteps = 200;
constexpr double kFoot = 1e-3;   // of the radius
constexpr double kClose = 1e-7;  // of the radius: no further off is on the exact surface

}  // namespace

ExactOffset::ExactOffset(const formats::Mesh& surface, double distance)
    : m_surface(surface),
      m_distance(surface),
      m_winding(surface),
      m_radius(std::abs(distance)),
      m_side(distance > 0 ? 1 : -1),
      m_isClosed(ClosedFault(surface).empty()) {}

bool ExactOffset::IsOnSide(const Point& point) const {
  return !m_isClosed || (m_winding.Of(point) < 1) == (m_side > 0);
}

Point ExactOffset::SlopeAt(const Point& point, const MeshDistance::Nearest& nearest) const {
  const auto [a, b, c] = Corners(m_surface, m_surface.facets[nearest.facet]);
  return Unit(Minus(point, NearestOnTriangle(point, a, b, c)));
}

// From a point of the band to its end: along `first` for the first step, then up the slope of the
// distance. Steps are shorter than the distance, so that the walk stays on its side.
std::optional<Point> ExactOffset::WayOut(Point point, const Point& first) const {
  const Point start = point;
  for (int step = 0; step < kMostSteps; ++step) {
    const MeshDistance::Nearest nearest = m_distance.NearestTo(point);
    const double left = m_radius - nearest.distance;
    if (left <= kClose * m_radius) {
      return IsOnSide(point) ? std::optional<Point>(point) : std::nullopt;
    }
    point = Plus(point, step == 0 ? first : SlopeAt(point, nearest),
                 std::min(left, 0.9 * nearest.distance));
    if (Length(Minus(point, start)) > kMostRadii * m_radius) break;
  }
  return std::nullopt;
}

std::optional<Point> ExactOffset::Above(const Point& foot, const Point& way) const {
  const Point straight = Plus(foot, way, m_radius);
  if (m_distance.To(straight) >= m_radius * (1 - 1e-9)) {
    return IsOnSide(straight) ? std::optional<Point>(straight) : std::nullopt;
  }
  // Another band covers it. Up from the foot, so that no other wall is passed on the way.
  return WayOut(Plus(foot, way, kFoot * m_radius), way);
}

double ExactOffset::Off(const Point& point, const Point& outward) const {
  const MeshDistance::Nearest nearest = m_distance.NearestTo(point);
  const bool isOnSide = IsOnSide(point);
  if (nearest.distance >= m_radius) {
    return isOnSide ? nearest.distance - m_radius : nearest.distance + m_radius;
  }
  double least = kMostRadii * m_radius;
  // From the wrong side the way leads through the surface.
  const Point slope = Plus({}, SlopeAt(point, nearest), isOnSide ? 1 : -1);
  const Point start = isOnSide ? point : Plus(point, slope, nearest.distance + kFoot * m_radius);
  for (const Point& way : {slope, outward, Plus({}, outward, -1)}) {
    const std::optional<Point> end = WayOut(start, way);
    if (end) least = std::min(least, Length(Minus(*end, point)));
  }
  return least;
}

}  // namespace support
