#include "kernel/offset/OffsetField.h"

#include <cmath>

namespace kernel {

OffsetField::Off OffsetField::At(const Vec3& point, std::uint32_t guess) const {
  const StockTree::Nearest nearest = m_tree.FindNearest(point, guess);
  const double distance = std::sqrt(nearest.square);
  // In the band the side makes no difference.
  if (distance <= m_radius || IsOnSide(point)) return {m_radius - distance, nearest.slot};
  return {m_radius + distance, nearest.slot};
}

OffsetField::Slope OffsetField::SlopeOf(std::uint32_t slot, const Vec3& point) const {
  const Vec3 normal = SideNormal(slot);
  const Vec3 away = point - m_tree.FrameOf(slot).Nearest(point);
  const double above = Dot(away, normal);
  // Right above the facet its own normal is better than what rounding leaves of the way there.
  const bool isUpright = LengthSquared(away - normal * above) <= 64 * m_rounding * m_rounding;
  if (!isUpright) {
    const double distance = Length(away);
    return {distance - m_radius, away / distance};
  }
  if (m_side == Side::kBoth && above < 0) return {-above - m_radius, -normal};
  // Seen from the wrong side of a closed mesh the surface is the one beyond the facet.
  return {above - m_radius, normal};
}

std::vector<Vec3> OffsetField::SideNormals(std::uint32_t slot) const {
  const Vec3 normal = SideNormal(slot);
  if (m_side == Side::kBoth) return {normal, -normal};
  return {normal};
}

NearestMaker OffsetField::From(std::uint32_t slot, const Vec3& point) const {
  const Slope slope = SlopeOf(slot, point);
  return {slope.distance,
          Generator::Move(slot),
          {point - slope.gradient * slope.distance, -slope.gradient}};
}

}  // namespace kernel
