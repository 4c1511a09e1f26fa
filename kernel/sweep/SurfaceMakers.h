#pragma once

#include <cstdint>

#include "kernel/sweep/DexelModel.h"
#include "kernel/sweep/PathMoves.h"
#include "kernel/sweep/StockSurface.h"

namespace kernel {

// A plane that touches the surface of what is left of the stock.
struct TangentPlane {
  Vec3 point;
  Vec3 normal;  // unit, out of the solid
};

// Finds colour and exact surface again from a generator. Keeps references to both arguments.
class SurfaceMakers {
 public:
  SurfaceMakers(const StockSurface& stock, const PathMoves& moves)
      : m_stock(stock), m_moves(moves) {}

  const StockSurface& Stock() const { return m_stock; }
  const PathMoves& Moves() const { return m_moves; }

  std::uint8_t ColourOf(Generator maker) const;

  // At a point on the maker's surface.
  TangentPlane TangentAt(Generator maker, const Vec3& point) const;

  // The tangent plane where the smooth piece of surface that `known` touches comes nearest to
  // `target`; `known` itself when the piece ends before it gets there.
  TangentPlane TangentTowards(Generator maker, const TangentPlane& known, const Vec3& target) const;

 private:
  const StockSurface& m_stock;
  const PathMoves& m_moves;
};

}  // namespace kernel
