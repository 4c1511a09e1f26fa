#include "support/geometry/PlainTool.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace support {
namespace {

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

// Where a falling function of z becomes `target`.
template <typename Function>
double HeightWhere(Function&& function, double target, double low, double high) {
  for (int step = 0; step < 200; ++step) {
    const double middle = (low + high) / 2;
    (function(middle) > target ? low : high) = middle;
  }
  return (low + high) / 2;
}

}  // namespace

PlainTool::PlainTool(const formats::ConvexTool& tool) {
  const double a = Radians(tool.lowerTaperAngle == 0 ? 90 : tool.lowerTaperAngle);
  const double b = Radians(tool.upperTaperAngle);
  const double c = tool.cornerRadius;
  m_lower = {std::cos(a), -std::sin(a), 0};
  const double size = 10 * (c + tool.flatRadius + tool.taperHeight + 1) / std::sin(a);
  const double centre =
      HeightWhere([&](double z) { return m_lower.Excess(tool.flatRadius, z); }, -c, 0, size);
  m_corner = {tool.flatRadius, centre, c};
  m_wall = {std::cos(b), -std::sin(b), 0};
  m_wall.offset = m_wall.Excess(tool.flatRadius, centre) + c;
  m_hasShank = tool.taperHeight > 0 && b > 0;
  const double shankRadius = (m_wall.offset + std::sin(b) * tool.taperHeight) / std::cos(b);
  m_shank = {1, 0, shankRadius};
  const double u = tool.upperBevelRadius;
  const double bevel = HeightWhere([&](double z) { return m_wall.Excess(shankRadius - u, z); }, -u,
                                   -size, 100 * size);
  m_bevel = {shankRadius - u, bevel, u};
}

double PlainTool::RoundedCorner(const Line& below, const Line& above, const Corner& corner,
                                double r, double z) const {
  const double dr = r - corner.r;
  const double dz = z - corner.z;
  const bool pastBelow = dr * -below.normalZ + dz * below.normalR > 0;
  const bool beforeAbove = dr * -above.normalZ + dz * above.normalR < 0;
  if (pastBelow && beforeAbove) return std::sqrt(dr * dr + dz * dz) - corner.radius;
  return std::max(below.Excess(r, z), above.Excess(r, z));
}

double PlainTool::Excess(double r, double z) const {
  const double foot = RoundedCorner(m_lower, m_wall, m_corner, r, z);
  return m_hasShank ? std::max(foot, RoundedCorner(m_wall, m_shank, m_bevel, r, z)) : foot;
}

double PlainTool::SweptExcess(const Point& axis, const Point& from, const Point& to,
                              const Point& p) const {
  const auto at = [&](double s) {
    double z = 0;
    double square = 0;
    Point seen{};
    for (std::size_t k = 0; k < 3; ++k) {
      seen[k] = p[k] - from[k] - s * (to[k] - from[k]);
      z += seen[k] * axis[k];
    }
    for (std::size_t k = 0; k < 3; ++k) {
      const double radial = seen[k] - z * axis[k];
      square += radial * radial;
    }
    return Excess(std::sqrt(square), z);
  };
  double low = 0;
  double high = 1;
  for (int step = 0; step < 120; ++step) {
    const double first = low + (high - low) / 3;
    const double second = high - (high - low) / 3;
    if (at(first) > at(second)) {
      low = first;
    } else {
      high = second;
    }
  }
  return std::min({at(0), at(1), at((low + high) / 2)});
}

}  // namespace support
