// CurveXferQZ on shuffled segments, beside the channel that asks list after list; and the rewriting
// of a file's points, beside one that does it point by point.

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "BestOfFive.h"
#include "CopyFileBytes.h"
#include "PlainPoints.h"
#include "SameBytes.h"
#include "curves/CurveXferQZ.h"
#include "curves/ShiftedFiles.h"
#include "platform/QZCore.h"
#include "support/PlainCurveChannel.h"

namespace {

constexpr int kPoints = 60000;
constexpr int kLoop = 100;
constexpr std::int32_t kMovedPoints = 10'000'000;
constexpr double kCentre[3] = {1000.5, -3.25, 17};

using Segments = std::vector<std::pair<int, int>>;

// Loops of a hundred points each, `count` segments in all, in an order that has nothing to do with
// them. Where there are more segments than points a point belongs to several loops.
Segments ShuffledLoops(int count) {
  std::mt19937 random(7);
  std::vector<int> points(kPoints);
  for (int i = 0; i < kPoints; ++i) points[static_cast<std::size_t>(i)] = i;
  const auto below = [&](std::size_t limit) { return random() % limit; };
  const auto shuffle = [&](auto& items) {
    for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[below(i)]);
  };
  Segments segments;
  while (static_cast<int>(segments.size()) < count) {
    shuffle(points);
    for (std::size_t first = 0; first < kPoints; first += kLoop) {
      if (static_cast<int>(segments.size()) >= count) break;
      for (std::size_t i = 0; i < kLoop; ++i) {
        segments.emplace_back(points[first + i], points[first + (i + 1) % kLoop]);
      }
    }
  }
  shuffle(segments);
  return segments;
}

// The same loops over and over, one after the other: they all become curves.
Segments OrderlyLoops(int count) {
  Segments segments;
  for (int i = 0; i < count; ++i) {
    const int first = i / kLoop * kLoop % kPoints;
    segments.emplace_back(first + i % kLoop, first + (i + 1) % kLoop);
  }
  return segments;
}

// Many short open chains that all run into one long open chain.
Segments ChainsIntoAChain() {
  constexpr int kChains = 19'000;
  constexpr int kJunction = 2 * kChains;
  Segments segments;
  for (int i = 0; i < kChains; ++i) segments.emplace_back(i, kChains + i);
  for (int i = 0; i < kChains; ++i) segments.emplace_back(kJunction + i, kJunction + i + 1);
  for (int i = 0; i < kChains; ++i) segments.emplace_back(kChains + i, kJunction);
  return segments;
}

// The result of Close counts as well: a joining that fails and one that does not are different
// work.
template <class Channel>
bool Join(Channel* channel, const Segments& segments, int* result) {
  std::vector<const int*> handles;
  channel->Reset();
  for (int i = 0; i < kPoints; ++i) {
    const double xyz[3] = {i * 1.0, i % 7 * 1.0, 0};
    handles.push_back(channel->AddPoint(xyz));
    if (handles.back() == nullptr) return false;
  }
  for (const auto& [from, to] : segments) {
    const auto* a = handles[static_cast<std::size_t>(from)];
    const auto* b = handles[static_cast<std::size_t>(to)];
    if (channel->AddSegment(a, b) == nullptr) return false;
  }
  *result = channel->Close();
  return true;
}

bool WritePoints(const std::string& path) {
  FILE* stream = std::fopen(path.c_str(), "wb");
  if (stream == nullptr) return false;
  const std::int32_t triangles = 1;
  std::fwrite("binary surface", 14, 1, stream);
  std::fwrite(&kMovedPoints, 4, 1, stream);
  std::fwrite(&triangles, 4, 1, stream);
  for (std::int32_t i = 0; i < kMovedPoints; ++i) {
    const double xyz[3] = {i * 0.001, i % 1000 * 0.01, 1.0 / (i + 1)};
    std::fwrite(xyz, 24, 1, stream);
  }
  std::fwrite("\1\0\0\0\1\0\0\0\1\0\0\0\7", 13, 1, stream);
  return std::fclose(stream) == 0;
}

struct Outcomes {
  int byIndex = -1, scanning = -1, tenth = -1, million = -1, joined = -1;
  int chains = -1, chainsScanning = -1;
};

}  // namespace

int main(int argc, char** argv) {
  const BenchDirectory directory;
  const auto path = [&](const char* name) { return directory.Path() + name; };
  const Segments sixtyThousand = ShuffledLoops(60'000);
  const Segments hundredThousand = ShuffledLoops(100'000);
  const Segments million = ShuffledLoops(1'000'000);
  const Segments orderly = OrderlyLoops(1'000'000);
  const Segments chains = ChainsIntoAChain();
  Outcomes outcomes;
  const auto byIndex = [&](const char* name, const Segments& segments, int* result) {
    return [file = path(name), &segments, result] {
      CurveXferQZ channel(0, file.c_str());
      return Join(&channel, segments, result);
    };
  };
  const auto scanning = [&](const char* name, const Segments& segments, int* result) {
    return [file = path(name), &segments, result] {
      support::PlainCurveChannel channel(0, file.c_str(), tol);
      return Join(&channel, segments, result);
    };
  };

  BestOfFive runs;
  runs.Add("60,000 segments by index", byIndex("index.tmp", sixtyThousand, &outcomes.byIndex));
  runs.Add("60,000 segments scanning", scanning("scanning.tmp", sixtyThousand, &outcomes.scanning));
  runs.Add("57,000 segments of chains by index", byIndex("chains.tmp", chains, &outcomes.chains));
  runs.Add("57,000 segments of chains scanning",
           scanning("chains-scanning.tmp", chains, &outcomes.chainsScanning));
  runs.Add("100,000 segments", byIndex("tenth.tmp", hundredThousand, &outcomes.tenth));
  runs.Add("1,000,000 segments", byIndex("million.tmp", million, &outcomes.million));

  runs.Add("1,000,000 segments in order", byIndex("joined.tmp", orderly, &outcomes.joined));

  if (!WritePoints(path("blocks.iff")) || !CopyFileBytes(path("blocks.iff"), path("plain.iff"))) {
    return 1;
  }
  runs.Add("10,000,000 points in blocks",
           [&] { return ShiftSurfaceFile(true, 0.78, kCentre, path("blocks.iff").c_str()); });
  runs.Add("10,000,000 points one by one",
           [&] { return PlainShiftSurface(path("plain.iff"), 0.78, kCentre); });
  runs.Add("copy of the points",
           [&] { return CopyFileBytes(path("blocks.iff"), path("copy.iff")); });
  if (!runs.Run(argc, argv)) return 2;

  runs.PrintRatio("60,000 segments scanning", "60,000 segments by index", "at least 40");
  runs.PrintRatio("57,000 segments of chains scanning", "57,000 segments of chains by index",
                  "at least 40");
  runs.PrintRatio("1,000,000 segments", "100,000 segments", "at most 14");
  runs.PrintRatio("10,000,000 points one by one", "10,000,000 points in blocks", "at least 10");
  runs.PrintRatio("10,000,000 points in blocks", "copy of the points", "for comparison");
  std::printf(
      "results: %d by index, %d scanning, %d of the hundred thousand, %d of the million, %d in "
      "order; chains: %d by index, %d scanning\n",
      outcomes.byIndex, outcomes.scanning, outcomes.tenth, outcomes.million, outcomes.joined,
      outcomes.chains, outcomes.chainsScanning);
  const bool sameCurves = SameBytes(path("index.tmp"), path("scanning.tmp")) &&
                          SameBytes(path("chains.tmp"), path("chains-scanning.tmp"));
  const bool samePoints = SameBytes(path("blocks.iff"), path("plain.iff"));
  std::printf("curves of both: %s; points of both: %s\n",
              sameCurves ? "the same bytes" : "DIFFERENT",
              samePoints ? "the same bytes" : "DIFFERENT");
  return sameCurves && samePoints ? 0 : 1;
}
