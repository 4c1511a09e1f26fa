// kernel_silhouette_bench: the shadow of a body with bumps, from file to file, and the outline of
// the same body spun; five times each, best time. Then what came out, and the most memory held.

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <numbers>
#include <string>

#include "BestOfFive.h"
#include "callbacks/UIDialog.h"
#include "curves/CurveTransfer.h"
#include "formats/BinarySurface.h"
#include "platform/IFSilhouette.h"
#include "platform/IFSpinsil.h"
#include "stock/SurfaceTransfer.h"

namespace {

// r = 50 (1 + 0.2 sin 5 theta sin 4 phi), theta from the pole; fans around the poles.
formats::Mesh Blob(int grid) {
  const auto at = [&](double theta, double phi) -> std::array<double, 3> {
    const double r = 50 * (1 + 0.2 * std::sin(5 * theta) * std::sin(4 * phi));
    return {r * std::sin(theta) * std::cos(phi), r * std::sin(theta) * std::sin(phi),
            r * std::cos(theta)};
  };
  formats::Mesh mesh;
  mesh.vertices.push_back({0, 0, 50});
  for (int i = 1; i < grid; ++i) {
    for (int j = 0; j < grid; ++j) {
      mesh.vertices.push_back(at(std::numbers::pi * i / grid, 2 * std::numbers::pi * j / grid));
    }
  }
  mesh.vertices.push_back({0, 0, -50});
  const auto number = [&](int i, int j) { return 1 + (i - 1) * grid + j % grid; };
  const auto last = static_cast<std::int32_t>(mesh.vertices.size()) - 1;
  for (int j = 0; j < grid; ++j) {
    mesh.facets.push_back({{0, number(1, j), number(1, j + 1)}, 1});
    for (int i = 1; i + 1 < grid; ++i) {
      mesh.facets.push_back({{number(i, j), number(i + 1, j), number(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{number(i, j), number(i + 1, j + 1), number(i, j + 1)}, 1});
    }
    mesh.facets.push_back({{number(grid - 1, j), last, number(grid - 1, j + 1)}, 1});
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

bool Silhouette(std::string input, std::string output) {
  Complaints complaints;
  IFSilhouette().Run(input.data(), output.data(), 0, &complaints);
  return !complaints.failed;
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

bool Spin(const formats::Mesh& mesh, CountingCurves& curves) {
  Complaints complaints;
  IFSpinsil spin(&complaints);
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
  return !complaints.failed;
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
  if (!bench.Run(argc, argv)) return EXIT_FAILURE;
  PrintCurves(output);
  std::printf("the spun outline has %d points\n", curves.points);
  std::printf("the silhouette holds %.0f MiB at most, the spun outline %.0f MiB\n", peak, spinPeak);
  return EXIT_SUCCESS;
}
