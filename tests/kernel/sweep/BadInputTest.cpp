// Input that cannot be swept: one fatal error that names the place, the output untouched.

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "SweepRun.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

formats::Mesh Block() { return support::Box({0, 0, 0}, {12, 10, 6}, 1); }

formats::PathRecord GoodPath() { return PathOf(Flat(2), 0.1, {{-3, 5, 4}, {15, 5, 4}}); }

void ExpectFatal(const SweepResult& run, const std::string& part) {
  ASSERT_EQ(run.dialog.errors.size(), 1U);
  EXPECT_NE(run.dialog.errors[0].find(part), std::string::npos) << run.dialog.errors[0];
  EXPECT_EQ(run.resets, 0);
  EXPECT_EQ(run.closes, 0);
}

void ExpectFatalPath(const formats::PathRecord& path, const std::string& part) {
  ExpectFatal(RunSweep(Block(), {GoodPath(), path}), part);
}

TEST(SweepBadInput, OpenStockIsFatal) {
  formats::Mesh open = Block();
  open.facets.pop_back();
  ExpectFatal(RunSweep(open, {GoodPath()}), "open");
}

TEST(SweepBadInput, OneFacetTurnedRoundIsAnOpenStock) {
  formats::Mesh turned = Block();
  std::swap(turned.facets[3].vertices[0], turned.facets[3].vertices[1]);
  ExpectFatal(RunSweep(turned, {GoodPath()}), "open");
}

TEST(SweepBadInput, EmptyStockIsFatal) { ExpectFatal(RunSweep({}, {GoodPath()}), "no facets"); }

TEST(SweepBadInput, FlatStockIsFatal) {
  formats::Mesh flat;
  flat.vertices = {{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}};
  flat.facets = {{{0, 1, 2}, 1}, {{0, 2, 1}, 1}};
  ExpectFatal(RunSweep(flat, {GoodPath()}), "no volume");
}

TEST(SweepBadInput, StockVertexThatIsNotFiniteIsNamed) {
  formats::Mesh bad = Block();
  bad.vertices[4][1] = kNan;
  ExpectFatal(RunSweep(bad, {GoodPath()}), "stock vertex 5");
}

TEST(SweepBadInput, UnreadableFileIsFatal) {
  ExpectFatal(RunSweepOnBytes(Block(), "binary toolpat"), "paths.tmp");
}

TEST(SweepBadInput, NegativeTolerancesAreNamed) {
  formats::PathRecord path = GoodPath();
  path.sweepToler = -1;
  ExpectFatalPath(path, "path 2: sweepToler");
  path = GoodPath();
  path.pathToler = -1e-9;
  ExpectFatalPath(path, "path 2: pathToler");
  path = GoodPath();
  path.compressToler = kNan;
  ExpectFatalPath(path, "path 2: compressToler");
}

TEST(SweepBadInput, MatrixThatIsNoRotationIsFatal) {
  formats::PathRecord path = GoodPath();
  path.matrix[8] = 1.0001;
  ExpectFatalPath(path, "path 2: matrix");
  path.matrix = {1, 0, 0, 0, 1, 0, 0, 0, -1};  // a reflection
  ExpectFatalPath(path, "path 2: matrix");
  path.matrix = {1, 0, 0, 0, kInfinity, 0, 0, 0, 1};
  ExpectFatalPath(path, "path 2: matrix");
}

TEST(SweepBadInput, MatrixWithinTheRotationToleranceIsTaken) {
  formats::PathRecord path = GoodPath();
  path.matrix[8] = 1 + 1e-7;
  EXPECT_TRUE(RunSweep(Block(), {path}).dialog.errors.empty());
}

TEST(SweepBadInput, OriginThatIsNotFiniteIsFatal) {
  formats::PathRecord path = GoodPath();
  path.origin[2] = -kInfinity;
  ExpectFatalPath(path, "path 2: origin");
}

TEST(SweepBadInput, PositionThatIsNotFiniteIsNamedWithItsCut) {
  formats::PathRecord path = GoodPath();
  path.cuts.push_back({{1, 2, 3, 4, kNan, 6}});
  ExpectFatalPath(path, "path 2, cut 2, position 2");
}

TEST(SweepBadInput, ToolThatIsNoSolidIsFatal) {
  formats::PathRecord path = GoodPath();
  path.tool = formats::ConvexTool{0, -2, 0, 90, 0, 0};
  ExpectFatalPath(path, "path 2: ");
  path.tool = formats::ConvexTool{0, 0, 0, 90, 0, 0};
  ExpectFatalPath(path, "path 2: ");
}

TEST(SweepBadInput, FiveAxisPathsUndercutAndCustomToolsSayThatTheyAreNotSupportedYet) {
  formats::PathRecord path = GoodPath();
  path.pathType = 2;
  path.cuts = {{{0, 0, 5, 0, 0, 1}}};
  ExpectFatalPath(path, "5-axis motion (pathType 2) is not supported yet");
  path = GoodPath();
  path.tool = formats::UndercutTool{};
  ExpectFatalPath(path, "undercut tools (tool type 2) are not supported yet");
  path.tool = formats::CustomTool{{}, {{0, 5, 0, 2, false}}};
  ExpectFatalPath(path, "custom tools (tool type 3) are not supported yet");
}

TEST(SweepBadInput, HugeCoordinatesEndInAnErrorNotInACrash) {
  const formats::Mesh far = support::Box({1e18, 0, 0}, {1e18 + 4096, 10, 6}, 1);
  const SweepResult run = RunSweep(far, {PathOf(Flat(2), 1e-3, {{1e18, 5, 4}, {1e18, 5, 4}})});
  EXPECT_LE(run.dialog.errors.size(), 1U);
  ExpectSound(run.mesh);
}

}  // namespace
}  // namespace sweep_test
