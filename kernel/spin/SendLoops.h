#pragma once

#include <vector>

#include "curves/CurveTransfer.h"
#include "kernel/common/StageProgress.h"
#include "kernel/outline/TraceLoops.h"

namespace kernel {

// Sends the loops from Reset on, without Close: each as a group, its points and then its segments
// in order. Returns how many points the channel took; fewer than there are when it refused one,
// which ends the sending. Throws FatalError when it refuses a segment.
std::size_t SendLoops(const std::vector<Loop>& loops, CurveTransfer& output,
                      StageProgress& progress);

std::size_t CountPoints(const std::vector<Loop>& loops);

}  // namespace kernel
