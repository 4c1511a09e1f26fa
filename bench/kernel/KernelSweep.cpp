// kernel_sweep_bench [--deviation] [A] [B] [C]: sweeps the named inputs (all by default), five
// times each, and prints for each: the best time, the process's peak memory so far, facets, volume
// and its error; with --deviation (slow) also how far the cut surface and the exact one are apart.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "MeshChannel.h"
#include "callbacks/UIDialog.h"
#include "formats/InterchangeFile.h"
#include "platform/IFSweep.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/MovedTools.h"
#include "support/geometry/SweepInputs.h"

namespace {

constexpr int kRuns = 5;
constexpr std::uint8_t kCutColour = 2;

class Complaints final : public UIDialog {
 public:
  void ErrorMessage(const char* message, bool fatal) override {
    std::printf("  %s: %s\n", fatal ? "error" : "warning", message);
  }
};

double Sweep(const support::SweepInput& input, const std::string& pathFile, MeshChannel& output) {
  Complaints complaints;
  IFSweep sweep(&complaints);
  Play(input.stock, *sweep.OpenStockChannel());
  std::string path = pathFile;
  const auto start = std::chrono::steady_clock::now();
  sweep.Run(&output, path.data());
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double PeakMebibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void PrintDeviation(const support::SweepInput& input, const formats::Mesh& mesh) {
  const auto& tool = std::get<formats::ConvexTool>(input.path.tool);
  support::MovedTools exact(tool.cornerRadius, tool.flatRadius);
  for (const formats::Cut& cut : input.path.cuts) {
    std::vector<support::Point> tips;
    for (std::size_t i = 0; i + 2 < cut.coordinates.size(); i += 3) {
      tips.push_back({cut.coordinates[i], cut.coordinates[i + 1], cut.coordinates[i + 2]});
    }
    exact.AddCut(tips);
  }
  std::vector<double> distances;
  const auto add = [&](const support::Point& point) {
    distances.push_back(std::abs(exact.SignedDistance(point, 1)));
  };
  for (const formats::Facet& facet : mesh.facets) {
    if (facet.colour != kCutColour) continue;
    add(support::Centre(mesh, facet));
    for (const support::Point& corner : support::Corners(mesh, facet)) add(corner);
  }
  const auto beyond = std::count_if(distances.begin(), distances.end(),
                                    [&](double d) { return d > input.path.sweepToler; });
  std::printf("  farthest cut vertex or centre %.4f (%td of %zu beyond %.3f)",
              *std::max_element(distances.begin(), distances.end()), beyond, distances.size(),
              input.path.sweepToler);
  const std::vector<support::Point> points =
      exact.SurfacePoints({0.1, 0.1, 0.1}, {99.9, 99.9, 49.9}, 1.37);
  std::printf(", farthest exact point %.4f (of %zu)\n", support::FarthestFromMesh(points, mesh),
              points.size());
}

void Measure(const std::string& name, const support::SweepInput& input, bool deviation) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("kernel_sweep_bench_" + name + ".tmp");
  formats::WriteInterchangeFile(path.string(), {input.path});
  MeshChannel output;
  double best = std::numeric_limits<double>::infinity();
  for (int run = 0; run < kRuns; ++run) {
    best = std::min(best, Sweep(input, path.string(), output));
  }
  std::filesystem::remove(path);
  const double volume = support::Volume(output.mesh);
  std::printf("%-3s %9.3f s %8.0f MiB %9zu facets   volume %.2f, error %+.2f\n", name.c_str(), best,
              PeakMebibytes(), output.mesh.facets.size(), volume, volume - input.volumeLeft);
  const std::string fault = support::ClosedFault(output.mesh) + support::ZeroAreaFault(output.mesh);
  if (!fault.empty()) std::printf("  UNSOUND: %s\n", fault.c_str());
  if (deviation) PrintDeviation(input, output.mesh);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const auto given = [&](const char* name) {
    return std::find(arguments.begin(), arguments.end(), name) != arguments.end();
  };
  const bool all = !given("A") && !given("B") && !given("C");
  const bool deviation = given("--deviation");
  if (all || given("C")) Measure("C", support::SweepInputC(), deviation);
  if (all || given("A")) Measure("A", support::SweepInputA(), deviation);
  if (all || given("B")) Measure("B", support::SweepInputB(), deviation);
  return EXIT_SUCCESS;
}
