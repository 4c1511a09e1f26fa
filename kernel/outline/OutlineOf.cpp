#include "kernel/outline/OutlineOf.h"

#include <cmath>
#include <utility>

#include "kernel/outline/SimplifyLoops.h"

namespace kernel {
namespace {

constexpr double kNarrow = 8;  // cells

bool IsNarrow(const Loop& loop) { return std::abs(DoubledArea(loop)) <= kNarrow * Perimeter(loop); }

}  // namespace

std::vector<Loop> OutlineOf(std::vector<PlaneEdge> boundary, const std::function<void()>& tell) {
  std::vector<Loop> loops = TraceLoops(std::move(boundary), tell);
  std::erase_if(loops, IsNarrow);
  // One cell: what has been split and led through cells is straight again.
  return SimplifyLoops(loops, 1, tell);
}

}  // namespace kernel
