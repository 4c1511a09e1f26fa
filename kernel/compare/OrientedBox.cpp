#include "kernel/compare/OrientedBox.h"

#include <array>

#include "kernel/common/Box3.h"

namespace kernel {
namespace {

// Outwards, in the tree's coordinates.
constexpr double kOutwards = 2e-6;

// Unit vectors at right angles: the facets' mean normal last, a long side of theirs first.
std::array<Vec3, 3> AxesOf(std::span<const Corners> facets) {
  Vec3 normal;
  Vec3 side;
  for (const Corners& corners : facets) {
    normal += Cross(corners[1] - corners[0], corners[2] - corners[0]);
    for (std::size_t i = 0; i < 3; ++i) {
      const Vec3 own = corners[(i + 1) % 3] - corners[i];
      if (LengthSquared(own) > LengthSquared(side)) side = own;
    }
  }
  normal = Normalised(normal);
  Vec3 first = side - normal * Dot(side, normal);
  if (LengthSquared(normal) == 0 || LengthSquared(first) < 1e-12 * LengthSquared(side)) {
    return {Vec3{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  }
  first = Normalised(first);
  return {first, Cross(normal, first), normal};
}

}  // namespace

OrientedBox::OrientedBox(const FacetBoxes& boxes, std::span<const Corners> facets) {
  const std::array<Vec3, 3> axes = AxesOf(facets);
  const Vec3& from = facets[0][0];
  Box3 box;  // in the axes
  for (const Corners& corners : facets) {
    for (const Vec3& corner : corners) {
      const Vec3 at = corner - from;
      box.Include({Dot(at, axes[0]), Dot(at, axes[1]), Dot(at, axes[2])});
    }
  }
  const Vec3 middle = (box.low + box.high) * 0.5;
  const FacetBoxes::Place centre =
      boxes.PlaceOf(from + axes[0] * middle.x + axes[1] * middle.y + axes[2] * middle.z);
  for (int i = 0; i < 3; ++i) {
    m_centre[i] = centre.at[i];
    m_half[i] = static_cast<float>((box.high[i] - box.low[i]) * 0.5 * boxes.Scale() + kOutwards);
    for (int k = 0; k < 3; ++k)
      m_axes[i][k] = static_cast<float>(axes[static_cast<std::size_t>(i)][k]);
  }
}

}  // namespace kernel
