#pragma once

#include "kernel/sweep/DexelModel.h"

namespace kernel {

// Takes the open stretch from `enter` to `leave` out of the ray; `maker` becomes the maker of new
// ends. Returns whether solid was removed. A stretch that reaches an interval by `sliver` or less
// only touches it; where it ends at an end that an earlier move has made, the surfaces coincide and
// the later move becomes that end's maker.
bool SubtractFromRay(DexelRay& ray, double enter, double leave, Generator maker, double sliver);

}  // namespace kernel
