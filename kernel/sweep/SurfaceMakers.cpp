#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {
namespace {

// A turn of more than this (as a cosine) within one cell means another piece of the cutter.
constexpr double kSamePiece = 0.85;

}  // namespace

std::uint8_t SurfaceMakers::ColourOf(Generator maker) const {
  return maker.IsMove() ? m_moves.PathOf(maker.Number()).colour
                        : m_stock.Mesh().facets[maker.Number()].colour;
}

TangentPlane SurfaceMakers::TangentAt(Generator maker, const Vec3& point) const {
  if (!maker.IsMove()) return {point, m_stock.NormalOf(maker.Number())};
  return {point, -m_moves.Swept(maker.Number()).Normal(point)};
}

TangentPlane SurfaceMakers::TangentTowards(Generator maker, const TangentPlane& known,
                                           const Vec3& target) const {
  if (!maker.IsMove()) return known;
  const Vec3 foot = target - known.normal * Dot(known.normal, target - known.point);
  const NearestBoundary nearest = m_moves.Swept(maker.Number()).Nearest(foot);
  const Vec3 normal = -nearest.normal;
  if (!(Dot(normal, known.normal) > kSamePiece)) return known;
  return {foot - nearest.normal * nearest.distance, normal};
}

}  // namespace kernel
