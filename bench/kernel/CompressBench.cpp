// kernel_compress_bench: a scanned ball of a million facets is merged within a tolerance, and by
// plain edge collapse ordered by quadrics, without any bound, down to the same number of facets.
// Prints the times, those of the processor for all threads together, the facets left, and the most
// memory that merging held.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "BestOfFive.h"
#include "PlainCollapse.h"
#include "formats/Mesh.h"
#include "kernel/compress/CompressMesh.h"
#include "support/geometry/MeshDistance.h"
#include "support/geometry/ScannedBall.h"

namespace {

constexpr std::size_t kRows = 354;
constexpr double kRadius = 50, kNoise = 0.01, kTolerance = 0.05, kLeast = 1e-7;

kernel::CutMesh Given() {
  const formats::Mesh ball = support::ScannedBall(kRows, kRadius, kNoise, {0, 0, 0});
  kernel::CutMesh mesh;
  for (const auto& p : ball.vertices) mesh.vertices.push_back({p[0], p[1], p[2]});
  for (const formats::Facet& facet : ball.facets) {
    const auto at = [&](std::size_t i) { return static_cast<std::uint32_t>(facet.vertices[i]); };
    mesh.facets.push_back({{at(0), at(1), at(2)}, facet.colour});
  }
  return mesh;
}

kernel::CutMesh Compressed(const kernel::CutMesh& given) {
  return kernel::CompressMesh(given, kTolerance, kLeast, [](double) {});
}

// Of the vertices of `from`, as a first look at what no bound means.
double FarthestVertex(const kernel::CutMesh& from, const kernel::CutMesh& to) {
  formats::Mesh mesh;
  for (const kernel::Vec3& p : to.vertices) mesh.vertices.push_back({p.x, p.y, p.z});
  for (const kernel::CutMesh::Facet& facet : to.facets) {
    const auto at = [&](std::size_t i) { return static_cast<std::int32_t>(facet.vertices[i]); };
    mesh.facets.push_back({{at(0), at(1), at(2)}, facet.colour});
  }
  const support::MeshDistance distance(mesh);
  double farthest = 0;
  for (const kernel::Vec3& p : from.vertices) {
    farthest = std::max(farthest, distance.To({p.x, p.y, p.z}));
  }
  return farthest;
}

struct Times {
  double wall, processor;
};

template <class Work>
Times Time(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t used = std::clock();
  work();
  const auto wall = std::chrono::steady_clock::now() - start;
  return {std::chrono::duration<double>(wall).count(),
          static_cast<double>(std::clock() - used) / CLOCKS_PER_SEC};
}

void Print(const char* name, const Times& times, std::size_t facets) {
  std::printf("%-15s %7.2f s, processor %7.2f s, %8.0f facets a processor second\n", name,
              times.wall, times.processor, static_cast<double>(facets) / times.processor);
}

}  // namespace

int main() {
  const double given = PeakMebibytes([] { return !Given().facets.empty(); });
  const double peak = PeakMebibytes([] { return !Compressed(Given()).facets.empty(); });
  if (given == 0 || peak == 0) return EXIT_FAILURE;

  const kernel::CutMesh ball = Given();
  kernel::CutMesh compressed, plain;
  const Times merging = Time([&] { compressed = Compressed(ball); });
  const Times yardstick = Time([&] { plain = PlainCollapse(ball, compressed.facets.size()); });
  Print("merging", merging, ball.facets.size());
  Print("plain collapse", yardstick, ball.facets.size());
  std::printf("processor time, merging against plain collapse: %.2f\n",
              merging.processor / yardstick.processor);
  std::printf("making the ball holds %.0f MiB at most, making and merging it %.0f MiB\n", given,
              peak);
  std::printf("%zu facets, merged within %g %zu, farthest vertex %.4f; plainly %zu, %.4f\n",
              ball.facets.size(), kTolerance, compressed.facets.size(),
              FarthestVertex(ball, compressed), plain.facets.size(), FarthestVertex(ball, plain));
  return EXIT_SUCCESS;
}
