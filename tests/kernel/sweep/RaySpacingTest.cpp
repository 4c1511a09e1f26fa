// How far apart the rays are chosen, and what becomes of the tolerance when there would be too
// many.

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SweepRun.h"
#include "kernel/sweep/RaySpacing.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

using kernel::Box3;
using kernel::ChooseRaySpacing;
using kernel::Curvature;
using kernel::RaySpacing;

Box3 Cube(double edge) { return {{0, 0, 0}, {edge, edge, edge}}; }

// 160 along the diagonal, so that 2.5 is a 64th of it.
const Box3 kBlock{{-20, 0, 5}, {80, 96, 5 + std::sqrt(160 * 160 - 100 * 100 - 96 * 96)}};

TEST(ChooseRaySpacing, FlatFacesAskForNoMoreThanTheStocksOwnShape) {
  const RaySpacing chosen = ChooseRaySpacing(kBlock, 0.01, {});
  EXPECT_NEAR(chosen.spacing, 2.5, 1e-12);
  EXPECT_EQ(chosen.tolerance, 0.01);
  EXPECT_FALSE(chosen.raised);
}

TEST(ChooseRaySpacing, ThinStockHasEightRaysAcrossIt) {
  EXPECT_NEAR(ChooseRaySpacing({{0, 0, 0}, {100, 100, 4}}, 0.01, {}).spacing, 0.5, 1e-12);
  // However large the tolerance is.
  EXPECT_NEAR(ChooseRaySpacing({{0, 0, 0}, {100, 100, 4}}, 3, {}).spacing, 0.5, 1e-12);
}

TEST(ChooseRaySpacing, RoundCutterAsksForTheSquareRootOfRadiusAndTolerance) {
  // 4 * 8 * 0.02 is 0.8 squared.
  EXPECT_NEAR(ChooseRaySpacing(kBlock, 0.02, {8, 0}).spacing, 0.8 * 0.8, 1e-12);
  // A quarter of the tolerance halves it.
  EXPECT_NEAR(ChooseRaySpacing(kBlock, 0.005, {8, 0}).spacing, 0.8 * 0.4, 1e-12);
}

TEST(ChooseRaySpacing, RoundCutterHasAtLeastThreeRaysOnItsRadius) {
  // By the tolerance alone they would be 0.8 * sqrt(4 * 0.6 * 0.15) = 0.48 apart.
  EXPECT_NEAR(ChooseRaySpacing(kBlock, 0.15, {0.6, 0}).spacing, 0.2, 1e-12);
}

TEST(ChooseRaySpacing, SharpTipAsksForFourTolerancesOverItsSlope) {
  const double infinite = Curvature().radius;
  EXPECT_NEAR(ChooseRaySpacing(kBlock, 0.02, {infinite, 0.5}).spacing, 0.16, 1e-12);
  // The round faces of the same job may ask for more, and then count.
  EXPECT_NEAR(ChooseRaySpacing(kBlock, 0.02, {0.48, 0.5}).spacing, 0.8 * std::sqrt(0.0384), 1e-12);
}

TEST(ChooseRaySpacing, NeverBelowTheTolerance) {
  EXPECT_EQ(ChooseRaySpacing(kBlock, 0.25, {0.3, 0}).spacing, 0.25);
}

// Memory for n = edge / spacing + 2 nodes along each edge of a cube, in bytes: 0.32 n^3 for the
// nodes, 3 n^2 rays of 80 and 6 n^2 cells of the surface of 450. For n = 1572 that is 8.508e9 and
// fits in 8 GiB, 8.590e9; for 1602 it is 8.861e9, for 1525.8 again 7.982e9.
TEST(ChooseRaySpacing, JobThatJustFitsInMemoryKeepsItsTolerance) {
  const double tolerance = 0.01 / (0.64 * 1.2);  // 0.1 between the rays for a radius of 0.3
  const RaySpacing chosen = ChooseRaySpacing(Cube(157), tolerance, {0.3, 0});
  EXPECT_NEAR(chosen.spacing, 0.1, 1e-12);
  EXPECT_EQ(chosen.tolerance, tolerance);
  EXPECT_FALSE(chosen.raised);
}

TEST(ChooseRaySpacing, LackOfMemoryWidensTheSpacingByTwentiethsAndRaisesTheTolerance) {
  const double tolerance = 0.01 / (0.64 * 1.2);
  const RaySpacing chosen = ChooseRaySpacing(Cube(160), tolerance, {0.3, 0});
  EXPECT_TRUE(chosen.raised);
  EXPECT_NEAR(chosen.spacing, 0.105, 1e-12);
  // What rays 0.105 apart keep on a radius of 0.3: 0.13125 squared, over 1.2.
  EXPECT_NEAR(chosen.tolerance, 0.01435546875, 1e-12);
}

TEST(ChooseRaySpacing, LackOfMemoryRaisesTheToleranceOfASharpTipAsWell) {
  const RaySpacing chosen = ChooseRaySpacing(Cube(160), 0.025, {Curvature().radius, 1});
  EXPECT_TRUE(chosen.raised);
  EXPECT_NEAR(chosen.spacing, 0.105, 1e-12);
  EXPECT_NEAR(chosen.tolerance, 0.105 / 4, 1e-12);
}

// Eight rays across 0.04 are 0.005 apart, 4002 along each edge: 3.2e7 cells of 450 bytes are too
// many.
TEST(ChooseRaySpacing, WiderSpacingThatKeepsTheToleranceRaisesNothing) {
  const RaySpacing chosen = ChooseRaySpacing({{0, 0, 0}, {20, 20, 0.04}}, 0.5, {});
  EXPECT_GT(chosen.spacing, 0.005);
  EXPECT_EQ(chosen.tolerance, 0.5);
  EXPECT_FALSE(chosen.raised);
}

TEST(ChooseRaySpacing, RaisedToleranceIsAtLeastAnEighthOfTheSpacing) {
  const RaySpacing chosen = ChooseRaySpacing(Cube(160), 0.01 / (0.64 * 4), {1, 0});
  EXPECT_TRUE(chosen.raised);
  EXPECT_NEAR(chosen.spacing, 0.105, 1e-12);
  EXPECT_NEAR(chosen.tolerance, 0.013125, 1e-12);  // the radius of 1 alone would ask for 0.00430664
}

TEST(ChooseRaySpacing, WidensInAsManyStepsAsItTakes) {
  // 0.8 * sqrt(4 * 0.0025) / 16 = 0.005: 32002 nodes on an edge. 1.05^61 = 19.61 times as far
  // apart there are 1634 and 9.24e9 bytes, 1.05^62 = 20.59 times as far apart 1556, 8.32e9 bytes.
  const RaySpacing chosen = ChooseRaySpacing(Cube(160), 0.0025 / 256, {1, 0});
  EXPECT_TRUE(chosen.raised);
  EXPECT_NEAR(chosen.spacing, 0.005 * std::pow(1.05, 62), 1e-9);
}

TEST(RaisedTolerance, IsAWarningAheadOfTheWork) {
  const formats::Mesh cube = support::Box({0, 0, 0}, {160, 160, 160}, 1);
  const SweepResult run = RunSweepUntilWarning(
      cube, {PathOf(Ball(0.3), 0.01 / (0.64 * 1.2), {{10, 10, 159.9}, {20, 10, 159.9}})});
  EXPECT_TRUE(run.stopped);
  EXPECT_THAT(run.dialog.warnings, testing::ElementsAre("the sweep tolerance is raised to "
                                                        "0.0143555 for lack of memory"));
  EXPECT_EQ(run.resets, 0);
}

}  // namespace
}  // namespace sweep_test
