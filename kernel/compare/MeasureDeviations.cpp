#include "kernel/compare/MeasureDeviations.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "kernel/common/Workers.h"
#include "kernel/compare/OrderAlongCurve.h"

namespace kernel {
namespace {

// Neighbours in a block share their guess; blocks do not, so that threads make no difference.
constexpr std::size_t kBlock = 1024;

constexpr double kFarAway = std::numeric_limits<double>::max();

// No surface comes between two points that are nearer to each other than one of them to the
// surface; a little is left for rounding.
constexpr double kSureOfSide = 1 - 1e-9;

// Deviations of points one after the other, each of which helps with the next.
class Walk {
 public:
  Walk(const StockTree& stock, std::uint32_t guess) : m_stock(stock), m_guess(guess) {}

  Deviation At(const Vec3& point) {
    const StockTree::Nearest nearest = m_stock.FindNearest(point, m_guess);
    const double distance = std::sqrt(nearest.square);
    const double sure = std::max(distance, m_distance) * kSureOfSide;
    if (!(LengthSquared(point - m_point) < sure * sure)) m_isInside = m_stock.IsInside(point);
    m_guess = nearest.slot;
    m_point = point;
    m_distance = distance;
    return {m_isInside ? distance : -distance, nearest.slot};
  }

 private:
  const StockTree& m_stock;
  std::uint32_t m_guess;
  // The last point; none is nearer to the first one than this.
  Vec3 m_point{kFarAway, kFarAway, kFarAway};
  double m_distance = 0;
  bool m_isInside = false;
};

}  // namespace

Deviation DeviationAt(const StockTree& stock, const Vec3& point, std::uint32_t guess) {
  return Walk(stock, guess).At(point);
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
        Walk walk(stock, 0);
        for (std::size_t i = block * kBlock; i < end; ++i) {
          deviations[order[i]] = walk.At(points[order[i]]);
        }
      },
      [&](std::size_t done) { watch(static_cast<double>(done) / static_cast<double>(blocks)); });
  return deviations;
}

}  // namespace kernel
