#include "OffsetRun.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <numeric>
#include <set>

#include "platform/IFSphoffset.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/OffsetDeviation.h"

namespace offset_test {

namespace {

void Run(SweepResult& result, const formats::Mesh& surface, double distance, double degrees,
         std::size_t channelMemory) {
  kernel_test::ResultChannel output(result, channelMemory);
  IFSphoffset offset(&result.dialog);
  kernel_test::PlayInto(*offset.OpenInputChannel(), surface);
  try {
    offset.Run(degrees, distance, &output);
  } catch (const RecordingDialog::Stop&) {
    result.stopped = true;
  }
}

}  // namespace

SweepResult RunOffset(const formats::Mesh& surface, double distance, double degrees, int throwAt,
                      std::size_t channelMemory) {
  SweepResult result;
  result.dialog.throwAt = throwAt;
  Run(result, surface, distance, degrees, channelMemory);
  return result;
}

std::string FirstWarning(const formats::Mesh& surface, double distance, double degrees) {
  SweepResult result;
  result.dialog.throwAtWarning = true;
  Run(result, surface, distance, degrees, SIZE_MAX);
  return result.stopped ? result.dialog.warnings.at(0) : std::string();
}

double Allowed(double distance, double degrees) {
  return std::abs(distance) * (1 - std::cos(degrees * std::numbers::pi / 360));
}

void ExpectSound(const SweepResult& run) {
  EXPECT_TRUE(run.dialog.errors.empty()) << run.dialog.errors[0];
  EXPECT_TRUE(run.dialog.warnings.empty()) << run.dialog.warnings[0];
  EXPECT_EQ(run.resets, 1);
  EXPECT_EQ(run.closes, 1);
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(support::ZeroAreaFault(run.mesh), "");
  EXPECT_EQ(support::VertexFault(run.mesh), "");
  EXPECT_GT(support::Volume(run.mesh), 0);
}

void ExpectFits(const SweepResult& run, const formats::Mesh& surface, double distance,
                double degrees) {
  ExpectSound(run);
  const support::OffsetDeviation deviation =
      support::DeviationOfOffset(surface, distance, run.mesh);
  EXPECT_GT(deviation.exactPoints, 0U);
  EXPECT_LE(deviation.ofResult, Allowed(distance, degrees));
  EXPECT_LE(deviation.ofExact, Allowed(distance, degrees));
}

void ExpectVolume(const SweepResult& run, double exact, double distance, double degrees) {
  EXPECT_NEAR(support::Volume(run.mesh), exact, Allowed(distance, degrees) * AreaOf(run.mesh));
}

double AreaOf(const formats::Mesh& mesh) {
  double area = 0;
  for (const formats::Facet& facet : mesh.facets) {
    const auto [a, b, c] = support::Corners(mesh, facet);
    area += 0.5 * support::Length(support::Cross(support::Minus(b, a), support::Minus(c, a)));
  }
  return area;
}

int CountPieces(const formats::Mesh& mesh) {
  std::vector<std::size_t> lead(mesh.vertices.size());
  std::iota(lead.begin(), lead.end(), std::size_t{0});
  const auto root = [&](std::int32_t vertex) {
    auto at = static_cast<std::size_t>(vertex);
    while (lead[at] != at) at = lead[at] = lead[lead[at]];
    return at;
  };
  for (const formats::Facet& facet : mesh.facets) {
    lead[root(facet.vertices[0])] = root(facet.vertices[1]);
    lead[root(facet.vertices[1])] = root(facet.vertices[2]);
  }
  std::set<std::size_t> pieces;
  for (const formats::Facet& facet : mesh.facets) pieces.insert(root(facet.vertices[0]));
  return static_cast<int>(pieces.size());
}

}  // namespace offset_test
