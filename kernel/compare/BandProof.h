#pragma once

#include <array>
#include <atomic>

#include "kernel/compare/CompareBands.h"
#include "kernel/compare/ConvexPolygon.h"
#include "kernel/compare/MeasureDeviations.h"

namespace kernel {

// Whether one band holds all deviations on a facet: by bounds, never by samples alone.
//
// The facet's lowest distance is that of two triangles and exact. Its highest is bounded piece by
// piece: on a piece whose middle is d away and whose corners are at most r from there it is d + r
// at most; the distance to one stock facet, a convex function, is greatest at a corner; and where
// the piece lies straight above a stock facet it is no more than the height. What lies above the
// nearest facet is cut off and the rest looked at in the same way, so that a flat face needs about
// as many pieces as there are stock facets beside it, however narrow the band.
class BandProof {
 public:
  // Pieces of radius `finest` that cannot be decided are not held by the band. Every query ends
  // with an exception soon after `stopped` has become true.
  BandProof(const StockTree& stock, const CompareBands& bands, double finest,
            const std::atomic<bool>& stopped)
      : m_stock(stock), m_bands(bands), m_finest(finest), m_stopped(stopped) {}

  // `band` holds the deviations at the corners. True only when it holds those of all points.
  bool Holds(const Corners& facet, const std::array<Deviation, 3>& deviations,
             std::size_t band) const;

 private:
  // How far from the surface a point may lie.
  struct Allowed {
    double inside, outside;
    bool Contains(double distance, bool isInside) const {
      return distance <= (isInside ? inside : outside);
    }
    bool SameBothWays() const { return inside == outside; }
  };

  bool IsHeld(const ConvexPolygon& piece, Allowed allowed, std::uint32_t guess, int depth) const;
  bool LiesAbove(const ConvexPolygon& piece, std::uint32_t slot, double high) const;
  // Cuts off what lies straight above a stock facet: false when that is not within `high`, or no
  // more than `share` of the piece's area; else `rest` is what is left.
  bool CutOff(const ConvexPolygon& piece, std::uint32_t slot, double high, double share,
              std::array<ConvexPolygon, 3>& rest) const;

  const StockTree& m_stock;
  const CompareBands& m_bands;
  double m_finest;
  const std::atomic<bool>& m_stopped;
};

}  // namespace kernel
