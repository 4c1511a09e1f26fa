#include "support/geometry/OffsetDeviation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"
#include "support/geometry/PlainDeviation.h"
#include "support/geometry/Point.h"

namespace support {
namespace {

// A walk that has gone on for so many radii is not about the place that it began at any more.
constexpr double kMostRadii = 3;
constexpr int kMostSteps = 200;
constexpr double kFoot = 1e-3;  // of the radius
// Above this a winding number for each point takes too long.
constexpr std::size_t kFewFacets = 5000;

Point Unit(const Point& a) {
  const double length = Length(a);
  return length > 0 ? Plus({}, a, 1 / length) : a;
}

Point Between(const Point& a, const Point& b, double share) {
  return Unit(Plus(Plus({}, a, 1 - share), b, share));
}

class Witness {
 public:
  Witness(const formats::Mesh& surface, double distance)
      : m_surface(surface),
        m_distance(surface),
        m_radius(std::abs(distance)),
        m_side(distance > 0 ? 1 : -1),
        m_isClosed(ClosedFault(surface).empty()) {}

  double To(const Point& point) const { return m_distance.To(point); }
  double Radius() const { return m_radius; }
  const formats::Mesh& Surface() const { return m_surface; }
  // An open surface has an offset on both sides.
  std::vector<double> Sides() const {
    return m_isClosed ? std::vector<double>{m_side} : std::vector<double>{1, -1};
  }

  // From a point of the band to its end: along `first` for the first step, then up the slope of the
  // distance. Steps are shorter than the distance, so that the walk stays on its side.
  std::optional<Point> WayOut(Point point, const Point& first) const {
    const Point start = point;
    for (int step = 0; step < kMostSteps; ++step) {
      const double distance = To(point);
      const double left = m_radius - distance;
      if (left <= 1e-7 * m_radius) return point;
      point =
          Plus(point, step == 0 ? first : SlopeAt(point, distance), std::min(left, 0.9 * distance));
      if (Length(Minus(point, start)) > kMostRadii * m_radius) break;
    }
    return std::nullopt;
  }

  Point SlopeAt(const Point& point, double distance) const {
    const double h = 1e-6 * m_radius;
    Point slope{};
    for (std::size_t k = 0; k < 3; ++k) {
      Point beside = point;
      beside[k] += h;
      slope[k] = To(beside) - distance;
    }
    return Unit(slope);
  }

  // A closed surface's offset lies on one side of it.
  bool IsOnSide(const Point& point) const {
    if (!m_isClosed || m_surface.facets.size() > kFewFacets) return true;
    return (WindingNumber(m_surface, point) < 0.5) == (m_side > 0);
  }

 private:
  const formats::Mesh& m_surface;
  MeshDistance m_distance;
  double m_radius, m_side;
  bool m_isClosed;
};

// From the exact surface, or a little more. `outward`: of the result there.
double OffExact(const Witness& witness, const Point& point, const Point& outward) {
  const double distance = witness.To(point);
  if (distance >= witness.Radius()) return distance - witness.Radius();
  double least = kMostRadii * witness.Radius();
  for (const Point& way : {witness.SlopeAt(point, distance), outward, Plus({}, outward, -1)}) {
    const std::optional<Point> end = witness.WayOut(point, way);
    if (end) least = std::min(least, Length(Minus(*end, point)));
  }
  return least;
}

double FarthestOfResult(const Witness& witness, const formats::Mesh& result, std::size_t step) {
  double farthest = 0;
  for (std::size_t f = 0; f < result.facets.size(); f += step) {
    const auto corners = Corners(result, result.facets[f]);
    const Point outward = Normal(result, result.facets[f]);
    const auto look = [&](double x, double y) {
      const Point point = Plus(Plus(Plus({}, corners[0], 1 - x - y), corners[1], x), corners[2], y);
      farthest = std::max(farthest, OffExact(witness, point, outward));
    };
    look(0, 0);
    look(0.5, 0);
    look(0.5, 0.5);
    look(0, 0.5);
    look(1.0 / 3, 1.0 / 3);
    look(2.0 / 3, 1.0 / 6);
    look(1.0 / 6, 2.0 / 3);
    look(1.0 / 6, 1.0 / 6);
  }
  return farthest;
}

class ExactPoints {
 public:
  explicit ExactPoints(const Witness& witness)
      : m_witness(witness), m_sums(witness.Surface().vertices.size(), Point{}) {
    for (const formats::Facet& facet : witness.Surface().facets) {
      const Point normal = Normal(witness.Surface(), facet);
      for (std::size_t i = 0; i < 3; ++i) {
        const std::int32_t from = facet.vertices[i];
        const std::int32_t to = facet.vertices[(i + 1) % 3];
        m_beside[{from, to}] = normal;
        Point& sum = m_sums[static_cast<std::size_t>(from)];
        sum = Plus(sum, normal);
      }
    }
  }

  std::vector<Point> Of(std::size_t step) {
    const std::vector<formats::Facet>& facets = m_witness.Surface().facets;
    for (std::size_t f = 0; f < facets.size(); f += step) {
      for (const double side : m_witness.Sides()) AddAbove(facets[f], side);
    }
    return std::move(m_points);
  }

 private:
  void AddAbove(const formats::Facet& facet, double side) {
    const auto corners = Corners(m_witness.Surface(), facet);
    const Point normal = Normal(m_witness.Surface(), facet);
    Add(Centre(m_witness.Surface(), facet), normal, side);
    for (std::size_t i = 0; i < 3; ++i) {
      const Point& from = corners[i];
      const Point& to = corners[(i + 1) % 3];
      const auto beside = m_beside.find({facet.vertices[(i + 1) % 3], facet.vertices[i]});
      const Point other = beside == m_beside.end() ? Plus({}, normal, -1) : beside->second;
      const Point sum = Unit(m_sums[static_cast<std::size_t>(facet.vertices[i])]);
      for (const double share : {0.0, 0.25, 0.5}) {
        for (const double place : {0.25, 0.5, 0.75}) {
          Add(Plus(from, Minus(to, from), place), Between(normal, other, share), side);
        }
        Add(from, Between(normal, sum, 2 * share), side);
      }
    }
  }

  void Add(const Point& on, const Point& normal, double side) {
    const double radius = m_witness.Radius();
    if (!(Length(normal) > 0.5)) return;
    Point point = Plus(on, normal, side * radius);
    if (m_witness.To(point) < radius * (1 - 1e-9)) {
      // Another band covers it. Up from the foot, so that no other wall is passed on the way.
      const std::optional<Point> end =
          m_witness.WayOut(Plus(on, normal, side * kFoot * radius), Plus({}, normal, side));
      if (!end || !m_witness.IsOnSide(*end)) return;
      point = *end;
    }
    m_points.push_back(point);
  }

  const Witness& m_witness;
  std::vector<Point> m_sums;  // of the normals at each vertex
  std::map<std::pair<std::int32_t, std::int32_t>, Point> m_beside;
  std::vector<Point> m_points;
};

}  // namespace

OffsetDeviation DeviationOfOffset(const formats::Mesh& surface, double distance,
                                  const formats::Mesh& result, std::size_t step) {
  const Witness witness(surface, distance);
  OffsetDeviation deviation;
  deviation.ofResult = FarthestOfResult(witness, result, step);
  const MeshDistance toResult(result);
  for (const Point& point : ExactPoints(witness).Of(step)) {
    ++deviation.exactPoints;
    deviation.ofExact = std::max(deviation.ofExact, toResult.To(point));
  }
  return deviation;
}

}  // namespace support
