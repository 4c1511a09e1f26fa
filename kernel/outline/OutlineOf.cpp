#include "kernel/outline/OutlineOf.h"

#include <cmath>

#include "kernel/outline/BoundaryEdges.h"
#include "kernel/outline/SimplifyLoops.h"
#include "kernel/outline/SnapEdges.h"

namespace kernel {
namespace {

constexpr double kNarrow = 8;  // cells

bool IsNarrow(const Loop& loop) { return std::abs(DoubledArea(loop)) <= kNarrow * Perimeter(loop); }

}  // namespace

std::vector<Loop> OutlineOf(std::vector<PlaneEdge> edges, const std::function<void()>& tell) {
  SnapEdges(edges, tell);
  std::vector<Loop> loops = TraceLoops(BoundaryEdges(edges));
  std::erase_if(loops, IsNarrow);
  // One cell: what has been split and led through cells is straight again.
  return SimplifyLoops(loops, 1);
}

}  // namespace kernel
