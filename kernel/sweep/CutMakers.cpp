#include "kernel/sweep/CutMakers.h"

namespace kernel {

std::uint8_t CutMakers::ColourOf(Generator maker) const {
  return maker.IsMove() ? m_moves.PathOf(maker.Number()).colour
                        : m_stock.Mesh().facets[maker.Number()].colour;
}

TangentPlane CutMakers::TangentAt(Generator maker, const Vec3& point) const {
  if (!maker.IsMove()) return {point, m_stock.NormalOf(maker.Number())};
  return {point, -m_moves.Swept(maker.Number()).Normal(point)};
}

TangentPlane CutMakers::TangentNearest(Generator maker, const Vec3& point) const {
  if (!maker.IsMove()) {
    const Vec3& normal = m_stock.NormalOf(maker.Number());
    const StockMesh& mesh = m_stock.Mesh();
    return {mesh.vertices[mesh.facets[maker.Number()].vertices[0]], normal};
  }
  const NearestBoundary nearest = m_moves.Swept(maker.Number()).Nearest(point);
  return {point - nearest.normal * nearest.distance, -nearest.normal};
}

}  // namespace kernel
