// Input that cannot be compared: one fatal error that names the place, the output untouched.

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "CompareRun.h"
#include "Solids.h"
#include "platform/IFSweep.h"
#include "support/geometry/MeshChecks.h"

namespace compare_test {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

void ExpectFatal(const SweepResult& run, const std::string& message) {
  EXPECT_EQ(run.dialog.errors, std::vector<std::string>{message});
  EXPECT_EQ(run.resets, 0);
  EXPECT_EQ(run.closes, 0);
}

TEST(CompareBadInput, OpenStockIsFatal) {
  formats::Mesh open = Block();
  open.facets.pop_back();
  ExpectFatal(RunCompare(Block(), open, kThree),
              "the stock is open: 3 edges are not shared by facets that run through them in "
              "opposite directions");
}

TEST(CompareBadInput, EmptyOrFlatStockIsFatal) {
  ExpectFatal(RunCompare(Block(), {}, kThree), "the stock has no facets");
  formats::Mesh flat;
  flat.vertices = {{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}};
  flat.facets = {{{0, 1, 2}, 1}, {{0, 2, 1}, 1}};
  ExpectFatal(RunCompare(Block(), flat, kThree), "the stock encloses no volume");
}

TEST(CompareBadInput, VerticesThatAreNotFiniteAreNamed) {
  formats::Mesh bad = Block();
  bad.vertices[4][1] = kNan;
  ExpectFatal(RunCompare(Block(), bad, kThree), "stock vertex 5: a coordinate is not finite");
  bad.vertices[4][1] = -kInfinity;
  ExpectFatal(RunCompare(bad, Block(), kThree), "part vertex 5: a coordinate is not finite");
}

TEST(CompareBadInput, LimitsThatAreNotFiniteAreNamed) {
  ExpectFatal(RunCompare(Block(), Block(), {{-1, kNan, 1}, {1, 2, 3}, 4}),
              "band 2: the distance is not finite");
  ExpectFatal(RunCompare(Block(), Block(), {{-kInfinity, 0, 1}, {1, 2, 3}, 4}),
              "band 1: the distance is not finite");
}

TEST(CompareBadInput, ColoursAbove256AreNamed) {
  ExpectFatal(RunCompare(Block(), Block(), {{2, 1}, {257, 1}, 4}),
              "band 1: the colour is above 256: 257");
  ExpectFatal(RunCompare(Block(), Block(), {{2, 1}, {1, 1}, 4294967295U}),
              "the stock's colour is above 256: 4294967295");
}

TEST(CompareBadInput, NoBandIsFatal) {
  ExpectFatal(RunCompare(Block(), Block(), {{}, {}, 4}), "the number of divisions is below 1");
}

TEST(CompareBadInput, ChannelThatWasNotOpenedForThisIsFatal) {
  SweepResult result;
  kernel_test::ResultChannel output(result, SIZE_MAX);
  IFSweep sweep(&result.dialog);
  unsigned colours[] = {1};
  double limits[] = {0};
  sweep.Compare(sweep.OpenStockChannel(), sweep.OpenCompareSurfaceChannel(), 2, 1, colours, limits,
                &output);
  ExpectFatal(result, "the part is no channel that was opened here");
}

TEST(CompareBadInput, PartWithoutFacetsGivesAnEmptyResultAndAWarning) {
  const SweepResult run = RunCompare({}, Block(), kThree);
  EXPECT_TRUE(run.dialog.errors.empty());
  EXPECT_EQ(run.dialog.warnings, std::vector<std::string>{"the part has no facets"});
  EXPECT_EQ(run.resets, 1);
  EXPECT_EQ(run.closes, 1);
  EXPECT_TRUE(run.mesh.vertices.empty());
}

TEST(CompareBadInput, MeshesThatFaceInwardsAreTurnedWithAWarning) {
  const SweepResult run = RunCompare(Reversed(Block()), Reversed(PittedBlock(20, 5)), kThree);
  EXPECT_EQ(run.dialog.warnings.size(), 2U);
  EXPECT_GT(support::Volume(run.mesh), 0);
  EXPECT_NEAR(AreaOf(run.mesh, 1), 19.9 * 19.9, 3);
}

TEST(CompareBadInput, FacetsWithoutThreeCornersAreLeftOut) {
  formats::Mesh part = Block();
  part.vertices.push_back(part.vertices[0]);
  part.facets.push_back({{0, 8, 3}, 1});
  ExpectUnsplit(RunCompare(part, Block(), kThree), Block(), 2);
}

TEST(CompareBadInput, HugeCoordinatesEndInAResultOrAnErrorNotInACrash) {
  const support::Point far = {1e18, 0, 0};
  const SweepResult run = RunCompare(support::Box(far, {1e18 + 4096, 10, 6}, 1),
                                     support::Box(far, {1e18 + 2048, 10, 6}, 1), kThree);
  EXPECT_LE(run.dialog.errors.size(), 1U);
  const SweepResult huge = RunCompare(support::Box({0, 0, 0}, {1e200, 1, 1}, 1), Block(), kThree);
  EXPECT_EQ(huge.dialog.errors, std::vector<std::string>{"the part is too large to measure"});
}

}  // namespace
}  // namespace compare_test
