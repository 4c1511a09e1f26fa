// Merging within a tolerance, by a tool that stands above the stock and by one that cuts.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

#include "FeatureLines.h"
#include "Fits.h"
#include "SweepRun.h"
#include "kernel/common/Workers.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDeviation.h"
#include "support/geometry/ScannedBall.h"

namespace compress_test {
namespace {

using support::Point;
using sweep_test::SweepResult;

// A tool that stands above all of the mesh.
formats::PathRecord Above(const formats::Mesh& mesh, double tolerance) {
  Point highest = mesh.vertices.front();
  for (const Point& vertex : mesh.vertices)
    highest = std::max(highest, vertex, [](auto& a, auto& b) { return a[2] < b[2]; });
  highest[2] += 10 * tolerance;
  formats::PathRecord path =
      sweep_test::PathOf(sweep_test::Flat(25.4), 0.025, {highest, highest}, 0);
  path.compressToler = tolerance;
  return path;
}

SweepResult Compress(const formats::Mesh& mesh, double tolerance) {
  return sweep_test::RunSweep(mesh, {Above(mesh, tolerance)});
}

formats::Mesh Scan() { return support::ScannedBall(36, 30, 0.01, {0, 0, 0}); }

// A pocket with a flat floor and a row of grooves that end in its wall, each in a colour of its
// own.
formats::Mesh MachinedPart() {
  const formats::Mesh block = support::Box({0, 0, 0}, {40, 30, 20}, 1);
  std::vector<Point> grooves;
  for (int row = 0; row < 3; ++row) {
    const double y = 5 + 4 * row;
    grooves.push_back({row % 2 == 0 ? -8.0 : 48.0, y, 16});
    grooves.push_back({row % 2 == 0 ? 48.0 : -8.0, y + 1, 16.5});
  }
  const SweepResult run = sweep_test::RunSweep(
      block,
      {sweep_test::PathOf(sweep_test::Ball(4), 0.1, grooves, 2),
       sweep_test::PathOf(sweep_test::BullNose(5, 1), 0.1, {{14, 14, 9}, {27, 17, 9}}, 250)});
  return run.mesh;
}

// A turned ring with a sharp foot, a thousand diameters away from the origin.
formats::Mesh FarRing() {
  const Point centre = {-31000, 17000, 41000};
  constexpr int kRound = 120;
  constexpr int kAcross = 36;
  formats::Mesh mesh;
  for (int i = 0; i < kRound; ++i) {
    const double u = 2 * std::acos(-1.0) * i / kRound;
    for (int j = 0; j < kAcross; ++j) {
      const double v = 2 * std::acos(-1.0) * j / kAcross;
      const double r = 15 + 5 * std::cos(v);
      const double z = std::max(5 * std::sin(v), -2.5);
      mesh.vertices.push_back(support::Plus(centre, {r * std::cos(u), r * std::sin(u), z}));
    }
  }
  const auto at = [](int i, int j) { return (i % kRound) * kAcross + j % kAcross; };
  for (int i = 0; i < kRound; ++i) {
    for (int j = 0; j < kAcross; ++j) {
      const auto colour = static_cast<std::uint8_t>(i < 40 ? 3 : 4);
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, colour});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, colour});
    }
  }
  return mesh;
}

struct Case {
  const char* name;
  formats::Mesh (*make)();
  double tolerance;
  double mostLeft;  // of the facets
};

std::ostream& operator<<(std::ostream& out, const Case& c) {
  return out << c.name << " within " << c.tolerance;
}

class Compressed : public testing::TestWithParam<Case> {};

TEST_P(Compressed, StaysWithinTheToleranceSeenFromEitherSurface) {
  const auto& [name, make, tolerance, mostLeft] = GetParam();
  const formats::Mesh given = make();
  const SweepResult run = Compress(given, tolerance);
  sweep_test::ExpectSound(run.mesh);
  EXPECT_TRUE(run.dialog.errors.empty());
  EXPECT_TRUE(run.dialog.warnings.empty());
  const double resolution = tolerance / 20;
  const support::Farthest there = support::FarthestFrom(given, run.mesh, resolution);
  const support::Farthest back = support::FarthestFrom(run.mesh, given, resolution);
  EXPECT_LE(there.reached, tolerance);
  EXPECT_LE(back.reached, tolerance);
  EXPECT_LE(there.bound, tolerance + resolution);
  EXPECT_LE(back.bound, tolerance + resolution);
  EXPECT_LE(static_cast<double>(run.mesh.facets.size()),
            mostLeft * static_cast<double>(given.facets.size()));
  std::printf("%-8s %8g %8zu -> %6zu facets, %.6f from the given surface, %.6f back\n", name,
              tolerance, given.facets.size(), run.mesh.facets.size(), there.reached, back.reached);
}

TEST_P(Compressed, KeepsColourBordersAndSharpEdges) {
  const formats::Mesh given = GetParam().make();
  const double tolerance = GetParam().tolerance;
  const SweepResult run = Compress(given, tolerance);
  const std::vector<FeatureLine> before = FeatureLines(given);
  const std::vector<FeatureLine> after = FeatureLines(run.mesh);
  EXPECT_LE(FarthestFromLines(before, after), tolerance / 100 * 1.001);
  EXPECT_LE(FarthestFromLines(after, before), tolerance / 100 * 1.001);
}

INSTANTIATE_TEST_SUITE_P(
    Meshes, Compressed,
    testing::Values(Case{"scan", Scan, 0.02, 0.95}, Case{"scan", Scan, 0.05, 0.55},
                    Case{"scan", Scan, 0.2, 0.15}, Case{"machined", MachinedPart, 0.01, 0.2},
                    Case{"machined", MachinedPart, 0.05, 0.1},
                    Case{"machined", MachinedPart, 0.2, 0.08},
                    Case{"far ring", FarRing, 0.005, 0.75}, Case{"far ring", FarRing, 0.02, 0.55},
                    Case{"far ring", FarRing, 0.1, 0.25}));

TEST(Compress, CutSurfaceStaysWithinBothTolerances) {
  constexpr double kSweep = 0.05;
  constexpr double kCompress = 0.05;
  const formats::Mesh block = support::Box({0, 0, 0}, {40, 30, 20}, 1);
  const std::vector<Point> tips = {{-10, 14, 17}, {50, 16, 18}, {50, 19, 16}, {-10, 21, 17}};
  formats::PathRecord path = sweep_test::PathOf(sweep_test::Ball(4), kSweep, tips);
  const SweepResult plain = sweep_test::RunSweep(block, {path});
  path.compressToler = kCompress;
  const SweepResult run = sweep_test::RunSweep(block, {path});
  sweep_test::ExpectSound(run.mesh);
  EXPECT_LT(run.mesh.facets.size(), plain.mesh.facets.size() * 2 / 3);
  support::MovedTools tools(4, 0);
  tools.AddCut(tips);
  sweep_test::ExpectFits(run, tools, 2, kSweep + kCompress, {0.3, 0.3, 0.3}, {39.7, 29.7, 19.7});
}

TEST(Compress, SmallestToleranceOfThePathsHolds) {
  const formats::Mesh given = Scan();
  const SweepResult fine = Compress(given, 0.02);
  const SweepResult both = sweep_test::RunSweep(given, {Above(given, 0.2), Above(given, 0.02)});
  EXPECT_EQ(both.mesh.facets.size(), fine.mesh.facets.size());
}

TEST(Compress, ToleranceOfNothingMergesWhatIsExactlyFlatOnly) {
  formats::Mesh box = support::Box({0, 0, 0}, {4, 4, 4}, 1);
  const std::size_t plain = box.facets.size();
  // A vertex in the middle of each facet, on it to the last bit.
  for (std::size_t f = 0; f < plain; ++f) {
    const std::array<Point, 3> corners = support::Corners(box, box.facets[f]);
    const auto middle = static_cast<std::int32_t>(box.vertices.size());
    box.vertices.push_back(support::Plus(
        support::Plus({}, support::Plus(corners[0], corners[1]), 0.25), corners[2], 0.5));
    const std::array<std::int32_t, 3> v = box.facets[f].vertices;
    box.facets[f].vertices = {v[0], v[1], middle};
    box.facets.push_back({{v[1], v[2], middle}, 1});
    box.facets.push_back({{v[2], v[0], middle}, 1});
  }
  EXPECT_EQ(Compress(box, 0).mesh.facets.size(), plain);
  box.vertices.back()[0] += 1e-6;
  box.vertices.back()[1] += 1e-6;
  box.vertices.back()[2] += 1e-6;
  EXPECT_EQ(Compress(box, 0).mesh.facets.size(), plain + 2);
  EXPECT_EQ(Compress(box, 1e-5).mesh.facets.size(), plain);
}

TEST(Compress, FacetsThatNothingCanBeMergedOfComeOutAsTheyWere) {
  const formats::Mesh box = support::Box({1, 2, 3}, {4, 6, 8}, 7);
  const SweepResult run = Compress(box, 0.5);
  EXPECT_EQ(run.mesh.vertices, box.vertices);
  ASSERT_EQ(run.mesh.facets.size(), box.facets.size());
  for (std::size_t f = 0; f < box.facets.size(); ++f) {
    EXPECT_EQ(run.mesh.facets[f].vertices, box.facets[f].vertices);
    EXPECT_EQ(run.mesh.facets[f].colour, box.facets[f].colour);
  }
}

// What has no facet to spare keeps its volume, however coarse the tolerance.
TEST(Compress, ToleranceAboveTheThicknessLeavesASolid) {
  const SweepResult run = Compress(support::Box({0, 0, 0}, {40, 30, 0.01}, 1), 5);
  sweep_test::ExpectSound(run.mesh);
  const SweepResult ball = Compress(support::ScannedBall(12, 3, 0, {0, 0, 0}), 20);
  sweep_test::ExpectSound(ball.mesh);
}

bool AreSame(const formats::Mesh& a, const formats::Mesh& b) {
  return a.vertices == b.vertices &&
         std::equal(a.facets.begin(), a.facets.end(), b.facets.begin(), b.facets.end(),
                    [](const formats::Facet& one, const formats::Facet& other) {
                      return one.vertices == other.vertices && one.colour == other.colour;
                    });
}

TEST(Compress, OneThreadAndManyGiveTheSameBytes) {
  kernel::LimitWorkers(1);
  const SweepResult one = Compress(Scan(), 0.05);
  kernel::LimitWorkers(7);
  const SweepResult many = Compress(Scan(), 0.05);
  kernel::LimitWorkers(0);
  EXPECT_TRUE(AreSame(one.mesh, many.mesh));
}

formats::Mesh Transformed(formats::Mesh mesh, double factor, const Point& by) {
  for (Point& vertex : mesh.vertices) vertex = support::Plus(by, vertex, factor);
  return mesh;
}

// By powers of two, which round nothing away.
TEST(Compress, ScaledMeshAndToleranceGiveTheScaledResult) {
  const SweepResult here = Compress(Scan(), 0.0625);
  const SweepResult there = Compress(Transformed(Scan(), 32, {}), 2);
  EXPECT_TRUE(AreSame(Transformed(here.mesh, 32, {}), there.mesh));
}

TEST(Compress, MovedMeshGivesTheMovedResult) {
  formats::Mesh scan = Scan();
  for (Point& vertex : scan.vertices) {
    for (double& x : vertex) x = std::round(x * 1024) / 1024;
  }
  const Point by = {4096, -8192, 2048};
  EXPECT_TRUE(AreSame(Transformed(Compress(scan, 0.05).mesh, 1, by),
                      Compress(Transformed(scan, 1, by), 0.05).mesh));
}

TEST(CompressCallbacks, StageIsNamedAndPercentagesRise) {
  const SweepResult run = Compress(Scan(), 0.05);
  const std::vector<std::string> stages = run.dialog.Stages();
  EXPECT_TRUE(std::any_of(stages.begin(), stages.end(), [](const std::string& stage) {
    return stage.rfind("Compressing", 0) == 0;
  }));
  EXPECT_TRUE(std::is_sorted(run.dialog.percentages.begin(), run.dialog.percentages.end()));
  EXPECT_EQ(run.dialog.percentages.back(), 100);
}

TEST(CompressCallbacks, StopAtAnyCallLeavesTheOutputUnclosed) {
  const formats::Mesh scan = support::ScannedBall(24, 30, 0.01, {0, 0, 0});
  bool ended = false;
  for (int k = 1; !ended; ++k) {
    ASSERT_LT(k, 500);
    const SweepResult run = sweep_test::RunSweep(scan, {Above(scan, 0.1)}, k);
    ended = !run.stopped;
    EXPECT_EQ(run.closes, ended ? 1 : 0) << "stopped at call " << k;
  }
}

}  // namespace
}  // namespace compress_test
