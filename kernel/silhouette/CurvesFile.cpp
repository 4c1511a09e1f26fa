#include "kernel/silhouette/CurvesFile.h"

#include <cstdint>

#include "formats/BinaryWriter.h"
#include "formats/FileError.h"

namespace kernel {
namespace {

constexpr std::size_t kMostPoints = INT32_MAX;

std::int32_t CountPoints(const std::string& path, const std::vector<Loop>& loops) {
  std::size_t points = 0;
  for (const Loop& loop : loops) points += loop.size();
  if (points > kMostPoints) throw formats::FileError(path + ": too many points for the format");
  return static_cast<std::int32_t>(points);
}

void WriteCurve(formats::BinaryWriter& writer, std::int32_t first, std::int32_t count) {
  writer.Write(count);
  writer.Write<std::int32_t>(0);
  writer.Write<std::int32_t>(0);
  for (std::int32_t i = 0; i < count; ++i) {
    writer.Write(first + i);
    writer.Write(first + (i + 1) % count);
  }
}

}  // namespace

void WriteTreeCurves(const std::string& path, const std::vector<Loop>& loops, double z) {
  const std::int32_t points = CountPoints(path, loops);
  formats::BinaryWriter writer(path);
  writer.WriteText("binary tree_curves");
  writer.Write(points);
  writer.Write(points);  // a closed curve has as many segments
  for (const Loop& loop : loops) {
    for (const Point2& point : loop) {
      writer.Write(point.x);
      writer.Write(point.y);
      writer.Write(z);
    }
  }
  std::int32_t first = 1;
  for (const Loop& loop : loops) {
    const auto count = static_cast<std::int32_t>(loop.size());
    WriteCurve(writer, first, count);
    first += count;
  }
  writer.Finish();
}

}  // namespace kernel
