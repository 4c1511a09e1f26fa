#include "kernel/compare/ConvexPolygon.h"

#include <algorithm>

namespace kernel {

ConvexPolygon::ConvexPolygon(const Corners& corners) {
  for (const Vec3& corner : corners) Add(corner);
}

Vec3 ConvexPolygon::Middle() const {
  Vec3 sum;
  for (std::size_t i = 0; i < m_count; ++i) sum += m_corners[i] - m_corners[0];
  return m_corners[0] + sum / static_cast<double>(m_count);
}

double ConvexPolygon::Radius(const Vec3& middle, std::size_t& furthest) const {
  double square = -1;
  for (std::size_t i = 0; i < m_count; ++i) {
    const double own = LengthSquared(m_corners[i] - middle);
    if (own <= square) continue;
    square = own;
    furthest = i;
  }
  return std::sqrt(square);
}

ConvexPolygon::Sides ConvexPolygon::Cut(const Vec3& onPlane, const Vec3& normal,
                                        double thin) const {
  std::array<double, kMost> heights;
  for (std::size_t i = 0; i < m_count; ++i) heights[i] = Dot(normal, m_corners[i] - onPlane);
  const auto [lowest, highest] =
      std::minmax_element(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(m_count));
  if (*lowest >= -thin) return {*this, {}};
  if (*highest <= thin) return {{}, *this};
  Sides sides;
  for (std::size_t i = 0; i < m_count; ++i) {
    const std::size_t next = i + 1 < m_count ? i + 1 : 0;
    if (heights[i] >= 0) sides.above.Add(m_corners[i]);
    if (heights[i] <= 0) sides.below.Add(m_corners[i]);
    if ((heights[i] > 0 && heights[next] < 0) || (heights[i] < 0 && heights[next] > 0)) {
      const double share = heights[i] / (heights[i] - heights[next]);
      const Vec3 crossing = m_corners[i] + (m_corners[next] - m_corners[i]) * share;
      sides.above.Add(crossing);
      sides.below.Add(crossing);
    }
  }
  return sides;
}

ConvexPolygon::Sides ConvexPolygon::Halves() const {
  Sides halves;
  const std::size_t middle = m_count / 2;
  for (std::size_t i = 0; i <= middle; ++i) halves.above.Add(m_corners[i]);
  for (std::size_t i = middle; i < m_count; ++i) halves.below.Add(m_corners[i]);
  halves.below.Add(m_corners[0]);
  return halves;
}

}  // namespace kernel
