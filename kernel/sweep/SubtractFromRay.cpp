#include "kernel/sweep/SubtractFromRay.h"

namespace kernel {
namespace {

void TakeOverEnd(double end, double cut, Generator& endMaker, Generator maker, double sliver) {
  if (endMaker.IsMove() && end - cut <= sliver && cut - end <= sliver) endMaker = maker;
}

}  // namespace

bool SubtractFromRay(DexelRay& ray, double enter, double leave, Generator maker, double sliver) {
  bool removed = false;
  for (std::size_t i = 0; i < ray.size();) {
    SolidInterval& solid = ray[i];
    if (leave <= solid.low + sliver || enter >= solid.high - sliver) {
      TakeOverEnd(solid.low, leave, solid.lowMaker, maker, sliver);
      TakeOverEnd(solid.high, enter, solid.highMaker, maker, sliver);
      if (leave < solid.low - sliver) break;
      ++i;
      continue;
    }
    removed = true;
    const bool keepsLow = enter > solid.low + sliver;
    const bool keepsHigh = leave < solid.high - sliver;
    if (keepsLow && keepsHigh) {
      const SolidInterval above{leave, solid.high, maker, solid.highMaker};
      solid.high = enter;
      solid.highMaker = maker;
      ray.insert(ray.begin() + static_cast<std::ptrdiff_t>(i) + 1, above);
      return true;
    }
    if (keepsLow) {
      solid.high = enter;
      solid.highMaker = maker;
      ++i;
    } else if (keepsHigh) {
      solid.low = leave;
      solid.lowMaker = maker;
      ++i;
    } else {
      ray.erase(ray.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
  return removed;
}

}  // namespace kernel
