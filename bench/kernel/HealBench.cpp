// kernel_heal_bench: a torus of a million facets, one in a hundred of which has corners of its own,
// up to 1e-5 apart from its neighbours', is healed with a tolerance of 1e-4, and welded plainly for
// comparison; both from file to file, five times each, best time. Then what healing made of it, and
// the most memory it held.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <random>
#include <string>

#include "BestOfFive.h"
#include "PlainWeld.h"
#include "callbacks/UIDialog.h"
#include "formats/BinarySurface.h"
#include "formats/MeshMeasures.h"
#include "platform/IFHeal.h"

namespace {

constexpr int kRound = 1000, kAcross = 500;  // two facets a cell
constexpr double kApart = 1e-5, kTolerance = 1e-4;

formats::Mesh Torus() {
  formats::Mesh mesh;
  for (int i = 0; i < kRound; ++i) {
    const double u = 2 * std::numbers::pi * i / kRound;
    for (int j = 0; j < kAcross; ++j) {
      const double v = 2 * std::numbers::pi * j / kAcross;
      const double r = 100 + 40 * std::cos(v);
      mesh.vertices.push_back({r * std::cos(u), r * std::sin(u), 40 * std::sin(v)});
    }
  }
  const auto at = [](int i, int j) { return (i % kRound) * kAcross + j % kAcross; };
  for (int i = 0; i < kRound; ++i) {
    for (int j = 0; j < kAcross; ++j) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 2});
    }
  }
  return mesh;
}

formats::Mesh JitteredTorus() {
  formats::Mesh mesh = Torus();
  std::mt19937_64 random(20);
  // The raw numbers, as the library's distributions differ from system to system.
  const auto share = [&] { return static_cast<double>(random() >> 11) * 0x1p-53; };
  for (formats::Facet& facet : mesh.facets) {
    if (share() >= 0.01) continue;
    for (std::int32_t& vertex : facet.vertices) {
      std::array<double, 3> place = mesh.vertices[static_cast<std::size_t>(vertex)];
      for (double& coordinate : place) coordinate += (share() - 0.5) * kApart;
      vertex = static_cast<std::int32_t>(mesh.vertices.size());
      mesh.vertices.push_back(place);
    }
  }
  return mesh;
}

class Complaints final : public UIDialog {
 public:
  void ErrorMessage(const char* message, bool fatal) override {
    std::printf("%s: %s\n", fatal ? "error" : "warning", message);
    failed = failed || fatal;
  }
  bool failed = false;
};

bool Heal(std::string input, std::string output) {
  Complaints complaints;
  IFHeal(&complaints).Run(kTolerance, input.data(), output.data());
  return !complaints.failed;
}

void PrintOutcome(const std::string& name, const std::string& path) {
  const formats::Mesh mesh = formats::ReadBinarySurface(path);
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  std::printf("%s: %zu facets, %zu vertices, %zu open, %zu flipped, %zu non-manifold edges\n",
              name.c_str(), mesh.facets.size(), mesh.vertices.size(), topology.openEdges,
              topology.flippedEdges, topology.nonManifoldEdges);
}

}  // namespace

int main(int argc, char** argv) {
  const BenchDirectory directory;
  const std::string input = directory.Path() + "jittered.iff";
  const std::string healed = directory.Path() + "healed.iff";
  const std::string welded = directory.Path() + "welded.iff";
  const auto make = [&] {
    formats::WriteBinarySurface(input, JitteredTorus());
    return true;
  };
  // Made in another process, so that this one stays small until the memory is measured.
  if (PeakMebibytes(make) == 0) return EXIT_FAILURE;
  const double peak = PeakMebibytes([&] { return Heal(input, healed); });

  BestOfFive bench;
  bench.Add("Heal", [&] { return Heal(input, healed); });
  bench.Add("PlainWeld", [&] { return PlainWeld(kTolerance, input, welded); });
  if (!bench.Run(argc, argv)) return EXIT_FAILURE;
  bench.PrintRatio("Heal", "PlainWeld", "4 or less");
  std::printf("healing holds %.0f MiB at most (1536 or less)\n", peak);
  PrintOutcome("given ", input);
  PrintOutcome("welded", welded);
  PrintOutcome("healed", healed);
  return EXIT_SUCCESS;
}
