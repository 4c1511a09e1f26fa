#pragma once

#include "kernel/sweep/PathMoves.h"
#include "kernel/sweep/StockSurface.h"
#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// What makes the surface of a cut stock: its facets and the moves. Keeps references to both
// arguments.
class CutMakers final : public SurfaceMakers {
 public:
  CutMakers(const StockSurface& stock, const PathMoves& moves) : m_stock(stock), m_moves(moves) {}

  const StockSurface& Stock() const { return m_stock; }
  const PathMoves& Moves() const { return m_moves; }

  std::uint8_t ColourOf(Generator maker) const override;
  TangentPlane TangentAt(Generator maker, const Vec3& point) const override;
  TangentPlane TangentNearest(Generator maker, const Vec3& point) const override;

 private:
  const StockSurface& m_stock;
  const PathMoves& m_moves;
};

}  // namespace kernel
