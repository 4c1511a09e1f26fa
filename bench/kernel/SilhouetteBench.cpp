// kernel_silhouette_bench: the shadow of a body with bumps, from file to file, and the outline of
// the same body and of balls spun; five times each, best time. Then what came out, the most memory
// held, and how soon larger runs count and stop.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "BestOfFive.h"
#include "CountTimes.h"
#include "OutlineShapes.h"
#include "curves/CurveTransfer.h"
#include "formats/BinarySurface.h"
#include "platform/IFSilhouette.h"
#include "platform/IFSpinsil.h"
#include "stock/SurfaceTransfer.h"

namespace {

bool Silhouette(std::string input, std::string output, CountTimes& times) {
  IFSilhouette().Run(input.data(), output.data(), 0, &times);
  return !times.failed;
}

bool Silhouette(const std::string& input, const std::string& output) {
  CountTimes times;
  return Silhouette(input, output, times);
}

// Counts what it takes.
struct CountingCurves final : CurveTransfer {
  int Reset() override { return points = segments = 0; }
  const int* AddPoint(const double*) override {
    number = points++;
    return &number;
  }
  void* AddSegment(const int*, const int*) override {
    ++segments;
    return this;
  }
  int Close() override { return 1; }

  int points = 0, segments = 0, number = 0;
};

bool Spin(const formats::Mesh& mesh, CountingCurves& curves, CountTimes& times) {
  IFSpinsil spin(&times);
  SurfaceTransfer* channel = spin.OpenInputChannel();
  std::vector<void*> handles;
  channel->Reset();
  for (const auto& vertex : mesh.vertices) handles.push_back(channel->AddVertex(vertex.data()));
  for (const formats::Facet& facet : mesh.facets) {
    const auto handle = [&](std::size_t i) {
      return handles[static_cast<std::size_t>(facet.vertices[i])];
    };
    channel->AddTriangle(handle(0), handle(1), handle(2), 1);
  }
  channel->Close();
  spin.Run(&curves, 0.01);
  return !times.failed;
}

bool Spin(const formats::Mesh& mesh, CountingCurves& curves) {
  CountTimes times;
  return Spin(mesh, curves, times);
}

// Stops the run at so many of its counts, one after the other, and says how long the longest way
// out is, and the longest way from one count to the next.
void PrintAnswers(const char* name, const std::function<bool(CountTimes&)>& run) {
  CountTimes whole;
  if (!run(whole)) return;
  double longest = 0;
  const long step = std::max(1L, whole.counts / 8);
  for (long k = 1; k <= whole.counts; k += step) {
    CountTimes times;
    times.stopAt = k;
    try {
      run(times);
    } catch (const CountTimes::Stop&) {
      longest = std::max(longest, times.SecondsSinceLast());
    }
  }
  std::printf("%s: %.0f ms from one count to the next at most, %.0f ms from a stop to the end\n",
              name, 1e3 * whole.longestBetween, 1e3 * longest);
}

void PrintCurves(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::int32_t points = 0;
  file.seekg(18);
  file.read(reinterpret_cast<char*>(&points), sizeof points);
  std::printf("the silhouette has %d points\n", points);
}

}  // namespace

int main(int argc, char** argv) {
  const BenchDirectory directory;
  const std::string input = directory.Path() + "blob.iff";
  const std::string fine = directory.Path() + "fine.iff";
  const std::string output = directory.Path() + "outline.crv";
  const auto make = [&] {
    formats::WriteBinarySurface(input, Blob(224));
    formats::WriteBinarySurface(fine, Blob(318));
    return true;
  };
  // Made in another process, so that this one stays small until the memory is measured.
  if (PeakMebibytes(make) == 0) return EXIT_FAILURE;
  const double peak = PeakMebibytes([&] { return Silhouette(input, output); });
  const double spinPeak = PeakMebibytes([&] {
    CountingCurves curves;
    return Spin(formats::ReadBinarySurface(input), curves);
  });

  const formats::Mesh blob = formats::ReadBinarySurface(input);
  CountingCurves curves;
  BestOfFive bench;
  bench.Add("Silhouette, 99904 facets", [&] { return Silhouette(input, output); });
  bench.Add("Silhouette, 201612 facets", [&] { return Silhouette(fine, output + "2"); });
  bench.Add("Spin, 99904 facets", [&] { return Spin(blob, curves); });
  // A hundredth of an edge's length at the equator, so that nearly every facet is folded.
  constexpr double kJitter = 0.003;
  const formats::Mesh few = TurnedBall(80, kJitter), some = TurnedBall(160, kJitter);
  const formats::Mesh many = TurnedBall(320, kJitter), regular = TurnedBall(318, 0);
  CountingCurves ball;
  bench.Add("Spin, ball of 6240 jittered facets", [&] { return Spin(few, ball); });
  bench.Add("Spin, ball of 25280 jittered facets", [&] { return Spin(some, ball); });
  bench.Add("Spin, ball of 101760 jittered facets", [&] { return Spin(many, ball); });
  bench.Add("Spin, ball of 100488 facets in rings", [&] { return Spin(regular, ball); });
  if (!bench.Run(argc, argv)) return EXIT_FAILURE;
  for (const char* name :
       {"Silhouette, 99904 facets", "Silhouette, 201612 facets", "Spin, 99904 facets",
        "Spin, ball of 6240 jittered facets", "Spin, ball of 25280 jittered facets",
        "Spin, ball of 101760 jittered facets", "Spin, ball of 100488 facets in rings"}) {
    const double seconds = bench.ProcessorTime(name);
    if (seconds > 0) std::printf("%s: %.3f s of processor time\n", name, seconds);
  }
  PrintCurves(output);
  std::printf("the spun outline has %d points\n", curves.points);
  std::printf("the silhouette holds %.0f MiB at most, the spun outline %.0f MiB\n", peak, spinPeak);
  formats::WriteBinarySurface(fine, Blob(1000));
  PrintAnswers("Silhouette, 1998000 facets",
               [&](CountTimes& times) { return Silhouette(fine, output, times); });
  PrintAnswers("Spin, ball of 25280 jittered facets",
               [&](CountTimes& times) { return Spin(some, ball, times); });
  return EXIT_SUCCESS;
}
