#pragma once

#include <functional>
#include <vector>

#include "kernel/outline/TraceLoops.h"

namespace kernel {

// Lays a grid over a part of the plane, fine enough that a cell is no more than the diagonal's
// 2^-42, or the last place of the largest coordinate where that is more. Its size is a power of
// two, so that coordinates of few digits lie on it.
class PlaneGrid {
 public:
  // Throws FatalError when the box between the corners is too large or too small to measure. A box
  // that is a point is fine.
  PlaneGrid(const Point2& low, const Point2& high);

  Point2 Snap(const Point2& place) const;
  Point2 Place(const Point2& gridPoint) const;
  // A length in cells.
  double Cells(double length) const { return length / m_cell; }

 private:
  Point2 m_low;
  double m_cell;
};

// The loops in the plane. A grid point where one of the `originals` has been snapped to gets that
// one's coordinates, the first one's where there are more. `tell` is called now and then; what it
// throws passes on.
std::vector<Loop> PlacedLoops(const std::vector<Loop>& loops, const PlaneGrid& grid,
                              const std::vector<Point2>& originals,
                              const std::function<void()>& tell);

}  // namespace kernel
