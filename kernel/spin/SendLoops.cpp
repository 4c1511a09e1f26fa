#include "kernel/spin/SendLoops.h"

#include <algorithm>
#include <array>

#include "kernel/common/FatalError.h"

namespace kernel {
namespace {

constexpr std::size_t kTellInterval = 256;  // points

void SendSegments(const std::vector<const int*>& handles, CurveTransfer& output) {
  for (std::size_t i = 0; i < handles.size(); ++i) {
    if (output.AddSegment(handles[i], handles[(i + 1) % handles.size()]) == nullptr) {
      throw FatalError("the output takes no more segments");
    }
  }
}

}  // namespace

std::size_t CountPoints(const std::vector<Loop>& loops) {
  std::size_t count = 0;
  for (const Loop& loop : loops) count += loop.size();
  return count;
}

std::size_t SendLoops(const std::vector<Loop>& loops, CurveTransfer& output,
                      StageProgress& progress) {
  const auto all = static_cast<double>(std::max<std::size_t>(CountPoints(loops), 1));
  std::size_t sent = 0;
  output.Reset();
  std::vector<const int*> handles;
  for (const Loop& loop : loops) {
    output.BeginGroup();
    handles.clear();
    for (const Point2& point : loop) {
      const std::array<double, 3> xyz = {point.x, point.y, 0};
      handles.push_back(output.AddPoint(xyz.data()));
      if (handles.back() == nullptr) return sent;
      if (++sent % kTellInterval == 0) progress.Advance(static_cast<double>(sent) / all);
    }
    SendSegments(handles, output);
    output.EndGroup();
  }
  return sent;
}

}  // namespace kernel
