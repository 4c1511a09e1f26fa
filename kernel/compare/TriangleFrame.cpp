#include "kernel/compare/TriangleFrame.h"

#include <algorithm>
#include <cstddef>

namespace kernel {
namespace {

// Not parallel to a direction.
Vec3 AnyAcross(const Vec3& direction) {
  const bool isAlongX = std::abs(direction.x) > 0.5;
  return Cross(direction, isAlongX ? Vec3{0, 1, 0} : Vec3{1, 0, 0});
}

}  // namespace

TriangleFrame::TriangleFrame(const Corners& corners) {
  std::size_t longest = 0;
  double square = -1;
  for (std::size_t i = 0; i < 3; ++i) {
    const double side = LengthSquared(corners[(i + 1) % 3] - corners[i]);
    if (side > square) {
      square = side;
      longest = i;
    }
  }
  m_origin = corners[longest];
  m_length = std::sqrt(square);
  m_along = Normalised(corners[(longest + 1) % 3] - m_origin);
  const Vec3 third = corners[(longest + 2) % 3] - m_origin;
  m_apex = std::clamp(Dot(third, m_along), 0.0, m_length);
  const Vec3 up = third - m_along * Dot(third, m_along);
  m_height = kernel::Length(up);
  m_across = m_height > 0 ? Normalised(up) : AnyAcross(m_along);
  // Twice is enough to be perpendicular to the last bit.
  m_across = Normalised(m_across - m_along * Dot(m_across, m_along));
  m_across = Normalised(m_across - m_along * Dot(m_across, m_along));
}

Vec3 TriangleFrame::Nearest(const Vec3& from) const { return from - Offset(from); }

Vec3 TriangleFrame::Offset(const Vec3& from) const {
  const Vec3 away = from - m_origin;
  const double x = Dot(away, m_along);
  const double y = Dot(away, m_across);
  if (y <= 0) return away - m_along * std::clamp(x, 0.0, m_length);
  // How far the point lies to the inner side of the two short sides, times their lengths.
  const double rest = m_length - m_apex;
  const double fromLeft = x * m_height - y * m_apex;
  const double fromRight = (m_length - x) * m_height - y * rest;
  if (fromLeft >= 0 && fromRight >= 0) return away - m_along * x - m_across * y;
  const auto onLeft = [&] {
    const double share =
        std::clamp((x * m_apex + y * m_height) / (m_apex * m_apex + m_height * m_height), 0.0, 1.0);
    return away - m_along * (share * m_apex) - m_across * (share * m_height);
  };
  const auto onRight = [&] {
    const double share = std::clamp(
        ((m_length - x) * rest + y * m_height) / (rest * rest + m_height * m_height), 0.0, 1.0);
    return away - m_along * (m_length - share * rest) - m_across * (share * m_height);
  };
  if (fromRight >= 0) return onLeft();
  if (fromLeft >= 0) return onRight();
  const Vec3 left = onLeft();
  const Vec3 right = onRight();
  return LengthSquared(left) < LengthSquared(right) ? left : right;
}

}  // namespace kernel
