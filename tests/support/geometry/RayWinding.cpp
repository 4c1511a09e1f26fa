#include "support/geometry/RayWinding.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/geometry/MeshChecks.h"

namespace support {
namespace {

// Into coordinates whose third axis is the ray's direction: turned about x by 0.7 and about y
// by 1.1 radians or so.
Point Turned(const Point& p) {
  const double y = 0.7648421872844885 * p[1] - 0.644217687237691 * p[2];
  const double z = 0.644217687237691 * p[1] + 0.7648421872844885 * p[2];
  return {0.4535961214255773 * p[0] + 0.8912073600614354 * z, y,
          0.4535961214255773 * z - 0.8912073600614354 * p[0]};
}

// Twice the area of a, b, p in the plane across the ray.
double Left(const Point& a, const Point& b, const Point& p) {
  return (b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0]);
}

}  // namespace

RayWinding::RayWinding(const formats::Mesh& solid)
    : m_low{kInfinity, kInfinity, 0}, m_high{-kInfinity, -kInfinity, 0} {
  for (const formats::Facet& facet : solid.facets) {
    const auto [a, b, c] = Corners(solid, facet);
    const Shadow& shadow = m_shadows.emplace_back(Shadow{Turned(a), Turned(b), Turned(c)});
    for (std::size_t k = 0; k < 2; ++k) {
      m_low[k] = std::min({m_low[k], shadow.a[k], shadow.b[k], shadow.c[k]});
      m_high[k] = std::max({m_high[k], shadow.a[k], shadow.b[k], shadow.c[k]});
    }
  }
  m_side = 1 + static_cast<std::size_t>(std::sqrt(static_cast<double>(m_shadows.size())));
  m_cells.resize(m_side * m_side);
  for (std::size_t i = 0; i < m_shadows.size(); ++i) {
    const Shadow& shadow = m_shadows[i];
    const auto first = [&](std::size_t k) {
      return CellOf(std::min({shadow.a[k], shadow.b[k], shadow.c[k]}), k);
    };
    const auto last = [&](std::size_t k) {
      return CellOf(std::max({shadow.a[k], shadow.b[k], shadow.c[k]}), k);
    };
    for (std::size_t y = first(1); y <= last(1); ++y) {
      for (std::size_t x = first(0); x <= last(0); ++x) {
        m_cells[y * m_side + x].push_back(static_cast<std::uint32_t>(i));
      }
    }
  }
}

std::size_t RayWinding::CellOf(double place, std::size_t axis) const {
  const double share = (place - m_low[axis]) / (m_high[axis] - m_low[axis]);
  const double cell = std::floor(share * static_cast<double>(m_side));
  return static_cast<std::size_t>(std::clamp(cell, 0.0, static_cast<double>(m_side - 1)));
}

int RayWinding::Of(const Point& point) const {
  const Point at = Turned(point);
  for (std::size_t k = 0; k < 2; ++k) {
    if (!(at[k] >= m_low[k] && at[k] <= m_high[k])) return 0;
  }
  int count = 0;
  for (const std::uint32_t i : m_cells[CellOf(at[1], 1) * m_side + CellOf(at[0], 0)]) {
    const auto& [a, b, c] = m_shadows[i];
    const double ofA = Left(b, c, at);
    const double ofB = Left(c, a, at);
    const double ofC = Left(a, b, at);
    const bool isUp = ofA > 0 && ofB > 0 && ofC > 0;
    const bool isDown = ofA < 0 && ofB < 0 && ofC < 0;
    if (!isUp && !isDown) continue;
    const double height = (ofA * a[2] + ofB * b[2] + ofC * c[2]) / (ofA + ofB + ofC);
    if (height > at[2]) count += isUp ? 1 : -1;
  }
  return count;
}

}  // namespace support
