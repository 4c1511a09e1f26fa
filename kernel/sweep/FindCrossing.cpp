#include "kernel/sweep/FindCrossing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kernel {

RayCrossing FindCrossing(const DexelRay& ray, double low, double high, bool leaving) {
  RayCrossing nearest{(low + high) / 2, {}};
  double least = std::numeric_limits<double>::infinity();
  const double middle = nearest.at;
  for (const SolidInterval& solid : ray) {
    const double end = leaving ? solid.high : solid.low;
    const double distance = std::abs(end - middle);
    if (distance < least) {
      least = distance;
      nearest = {std::clamp(end, low, high), leaving ? solid.highMaker : solid.lowMaker};
    }
    const double solidNode = leaving ? low : high;
    if (solid.low <= solidNode && solidNode < solid.high && low <= end && end <= high) {
      return {end, leaving ? solid.highMaker : solid.lowMaker};
    }
    if (solid.low > high) break;
  }
  return nearest;
}

}  // namespace kernel
