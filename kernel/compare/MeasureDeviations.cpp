#include "kernel/compare/MeasureDeviations.h"

#include <algorithm>
#include <cmath>

#include "kernel/common/Workers.h"
#include "kernel/compare/OrderAlongCurve.h"

namespace kernel {
namespace {

// Neighbours in a block share their guess; blocks do not, so that threads make no difference.
constexpr std::size_t kBlock = 1024;

}  // namespace

Deviation DeviationAt(const StockTree& stock, const Vec3& point, std::uint32_t guess) {
  const StockTree::Nearest nearest = stock.FindNearest(point, guess);
  const double distance = std::sqrt(nearest.square);
  return {stock.IsInside(point) ? distance : -distance, nearest.slot};
}

std::vector<Deviation> MeasureDeviations(const StockTree& stock, std::span<const Vec3> points,
                                         const std::function<void(double)>& watch) {
  const std::vector<std::uint32_t> order = OrderAlongCurve(points);
  std::vector<Deviation> deviations(points.size());
  const std::size_t blocks = (points.size() + kBlock - 1) / kBlock;
  RunTasks(
      blocks,
      [&](std::size_t block) {
        const std::size_t end = std::min(points.size(), (block + 1) * kBlock);
        std::uint32_t guess = 0;
        for (std::size_t i = block * kBlock; i < end; ++i) {
          Deviation& found = deviations[order[i]];
          found = DeviationAt(stock, points[order[i]], guess);
          guess = found.slot;
        }
      },
      [&](std::size_t done) { watch(static_cast<double>(done) / static_cast<double>(blocks)); });
  return deviations;
}

}  // namespace kernel
