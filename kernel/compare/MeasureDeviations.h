#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "kernel/compare/StockTree.h"

namespace kernel {

struct Deviation {
  double value = 0;        // above 0 inside the stock
  std::uint32_t slot = 0;  // a nearest facet's place in the tree
};

Deviation DeviationAt(const StockTree& stock, const Vec3& point, std::uint32_t guess);

// The deviations of many points, on all cores; `watch` hears the share that is done, at least every
// 50 ms, and may throw to stop. The outcome does not depend on the number of threads.
std::vector<Deviation> MeasureDeviations(const StockTree& stock, std::span<const Vec3> points,
                                         const std::function<void(double)>& watch);

}  // namespace kernel
