#include "support/geometry/OffsetDeviation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "support/geometry/ExactOffset.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"

namespace support {
namespace {

Point Between(const Point& a, const Point& b, double share) {
  return Unit(Plus(Plus({}, a, 1 - share), b, share));
}

class ResultPoints {
 public:
  ResultPoints(const ExactOffset& exact, const OffsetLooks& looks, OffsetDeviation& deviation)
      : m_exact(exact), m_looks(looks), m_deviation(deviation) {}

  void LookAt(const formats::Mesh& result) {
    std::vector<bool> isKnown(result.vertices.size(), false);
    for (std::size_t f = 0; f < result.facets.size(); f += m_looks.step) {
      const formats::Facet& facet = result.facets[f];
      const Point outward = Normal(result, facet);
      const std::array<Point, 3> corner = Corners(result, facet);
      for (std::size_t i = 0; i < 3; ++i) {
        const auto vertex = static_cast<std::size_t>(facet.vertices[i]);
        if (!isKnown[vertex]) Look(corner[i], outward);
        isKnown[vertex] = true;
        // An edge from one of its facets.
        const bool isOther = facet.vertices[i] > facet.vertices[(i + 1) % 3] && m_looks.step == 1;
        if (!isOther) Look(Plus(Plus({}, corner[i], 0.5), corner[(i + 1) % 3], 0.5), outward);
      }
      const auto inside = [&](double x, double y) {
        Look(Plus(Plus(Plus({}, corner[0], 1 - x - y), corner[1], x), corner[2], y), outward);
      };
      inside(1.0 / 3, 1.0 / 3);
      inside(2.0 / 3, 1.0 / 6);
      inside(1.0 / 6, 2.0 / 3);
      inside(1.0 / 6, 1.0 / 6);
    }
  }

 private:
  void Look(const Point& point, const Point& outward) {
    ++m_deviation.resultPoints;
    const double off = m_exact.Off(point, outward);
    m_deviation.ofResult = std::max(m_deviation.ofResult, off);
    if (off > m_looks.limit) m_deviation.resultBeyond.push_back({point, off});
  }

  const ExactOffset& m_exact;
  const OffsetLooks& m_looks;
  OffsetDeviation& m_deviation;
};

class ExactPoints {
 public:
  ExactPoints(const ExactOffset& exact, const OffsetLooks& looks, OffsetDeviation& deviation)
      : m_exact(exact),
        m_looks(looks),
        m_deviation(deviation),
        m_sums(exact.Surface().vertices.size(), Point{}) {
    for (const formats::Facet& facet : exact.Surface().facets) {
      const Point normal = Normal(exact.Surface(), facet);
      for (std::size_t i = 0; i < 3; ++i) {
        const std::int32_t from = facet.vertices[i];
        const std::int32_t to = facet.vertices[(i + 1) % 3];
        m_beside[{from, to}] = normal;
        Point& sum = m_sums[static_cast<std::size_t>(from)];
        sum = Plus(sum, normal);
      }
    }
  }

  void LookFrom(const formats::Mesh& result) {
    const MeshDistance toResult(result);
    const std::vector<formats::Facet>& facets = m_exact.Surface().facets;
    for (std::size_t f = 0; f < facets.size(); f += m_looks.step) {
      for (const double side : m_exact.Sides()) LookAbove(facets[f], side, toResult);
    }
  }

 private:
  void LookAbove(const formats::Facet& facet, double side, const MeshDistance& toResult) {
    const auto corners = Corners(m_exact.Surface(), facet);
    const Point normal = Normal(m_exact.Surface(), facet);
    const auto look = [&](const Point& foot, const Point& way) {
      if (!(Length(way) > 0.5)) return;
      const std::optional<Point> point = m_exact.Above(foot, Plus({}, way, side));
      if (!point) return;
      ++m_deviation.exactPoints;
      const double off = toResult.To(*point);
      m_deviation.ofExact = std::max(m_deviation.ofExact, off);
      if (off > m_looks.limit) m_deviation.exactBeyond.push_back({*point, off});
    };
    look(Centre(m_exact.Surface(), facet), normal);
    for (std::size_t i = 0; i < 3; ++i) {
      const Point& from = corners[i];
      const Point& to = corners[(i + 1) % 3];
      const auto beside = m_beside.find({facet.vertices[(i + 1) % 3], facet.vertices[i]});
      const Point other = beside == m_beside.end() ? Plus({}, normal, -1) : beside->second;
      const Point sum = Unit(m_sums[static_cast<std::size_t>(facet.vertices[i])]);
      for (const double share : {0.0, 0.25, 0.5}) {
        for (const double place : {0.25, 0.5, 0.75}) {
          look(Plus(from, Minus(to, from), place), Between(normal, other, share));
        }
        look(from, Between(normal, sum, 2 * share));
      }
    }
  }

  const ExactOffset& m_exact;
  const OffsetLooks& m_looks;
  OffsetDeviation& m_deviation;
  std::vector<Point> m_sums;  // of the normals at each vertex
  std::map<std::pair<std::int32_t, std::int32_t>, Point> m_beside;
};

}  // namespace

OffsetDeviation DeviationOfOffset(const formats::Mesh& surface, double distance,
                                  const formats::Mesh& result, const OffsetLooks& looks) {
  const ExactOffset exact(surface, distance);
  OffsetDeviation deviation;
  ResultPoints(exact, looks, deviation).LookAt(result);
  ExactPoints(exact, looks, deviation).LookFrom(result);
  return deviation;
}

}  // namespace support
