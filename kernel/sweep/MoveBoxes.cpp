#include "kernel/sweep/MoveBoxes.h"

#include <algorithm>

#include "kernel/common/Workers.h"

namespace kernel {

std::vector<Box3> BoxesWithin(const PathMoves& moves, std::size_t first, std::size_t count,
                              const Box3& clip) {
  constexpr std::size_t kChunk = 1024;
  std::vector<Box3> boxes(count);
  RunTasks((count + kChunk - 1) / kChunk,
           [&](std::size_t chunk) {
             for (std::size_t i = chunk * kChunk; i < std::min(count, (chunk + 1) * kChunk); ++i) {
               boxes[i] = moves.Swept(static_cast<std::uint32_t>(first + i)).BoundsWithin(clip);
             }
           },
           [](std::size_t) {});
  return boxes;
}

}  // namespace kernel
