// Offsets whose shape is known.

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "OffsetRun.h"
#include "Solids.h"
#include "support/geometry/MeshChecks.h"

namespace offset_test {
namespace {

using compare_test::Add;
using compare_test::Moved;
using compare_test::Reversed;
using support::Box;

constexpr double kPi = std::numbers::pi;

formats::Mesh Cube(double side) { return Box({0, 0, 0}, {side, side, side}, 3); }

double RoundedBlock(double a, double b, double c, double r) {
  return a * b * c + 2 * r * (a * b + b * c + c * a) + kPi * r * r * (a + b + c) +
         4.0 / 3 * kPi * r * r * r;
}

void ExpectBox(const formats::Mesh& mesh, const support::Point& low, const support::Point& high) {
  ASSERT_EQ(mesh.vertices.size(), 8U);
  EXPECT_EQ(mesh.facets.size(), 12U);
  for (const support::Point& vertex : mesh.vertices) {
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_LE(std::min(std::abs(vertex[k] - low[k]), std::abs(vertex[k] - high[k])), 1e-9);
    }
  }
}

TEST(OffsetShapes, CubeGrownHasRoundEdgesAndCorners) {
  for (const double degrees : {12.0, 90.0}) {
    for (const double r : {1.0, 40.0}) {
      SCOPED_TRACE(testing::Message() << r << " at " << degrees);
      const SweepResult run = RunOffset(Cube(10), r, degrees);
      ExpectFits(run, Cube(10), r, degrees);
      ExpectVolume(run, RoundedBlock(10, 10, 10, r), r, degrees);
    }
  }
}

TEST(OffsetShapes, AngleOfZeroStandsForTen) {
  const SweepResult run = RunOffset(Cube(10), 2);
  ExpectFits(run, Cube(10), 2, 10);
  EXPECT_EQ(RunOffset(Cube(10), 2, 10).mesh.vertices, run.mesh.vertices);
  EXPECT_LT(RunOffset(Cube(10), 2, 45).mesh.facets.size(), run.mesh.facets.size());
}

TEST(OffsetShapes, FacesOfAGrownCubeStayFlat) {
  const SweepResult run = RunOffset(Cube(10), 2, 10);
  double flat = 0;
  for (const formats::Facet& facet : run.mesh.facets) {
    const auto corners = support::Corners(run.mesh, facet);
    const bool isTop = std::all_of(corners.begin(), corners.end(), [](const support::Point& p) {
      return std::abs(p[2] - 12) <= 1e-9;
    });
    if (!isTop) continue;
    flat += 0.5 * support::Length(support::Cross(support::Minus(corners[1], corners[0]),
                                                 support::Minus(corners[2], corners[0])));
  }
  // The square of 10 but for facets that reach over to the round edges.
  EXPECT_GT(flat, 80);
}

TEST(OffsetShapes, CubeShrunkIsACubeExactly) {
  for (const double r : {0.25, 1.0, 4.0}) {
    SCOPED_TRACE(r);
    const SweepResult run = RunOffset(Cube(10), -r, 20);
    ExpectSound(run);
    ExpectBox(run.mesh, {r, r, r}, {10 - r, 10 - r, 10 - r});
  }
}

TEST(OffsetShapes, CubeShrunkToALittleCubeIsFoundWhateverTheDistance) {
  const SweepResult run = RunOffset(Cube(10), -4.9, 20);
  ExpectSound(run);
  ExpectBox(run.mesh, {4.9, 4.9, 4.9}, {5.1, 5.1, 5.1});
}

TEST(OffsetShapes, SmallDistanceKeepsItsToleranceOnALargeCube) {
  const SweepResult run = RunOffset(Cube(3), 0.1, 60);
  ExpectFits(run, Cube(3), 0.1, 60);
}

TEST(OffsetShapes, AngleTooSmallForTheFacetsItNeedsIsRaisedAndTold) {
  // Two million facets on a round surface of 2 pi r (3 + 2 r), of area r T each.
  EXPECT_EQ(FirstWarning(Box({0, 0, 0}, {1, 1, 1}, 1), 0.02, 0.001),
            "the facets may be up to 9.55044e-06 off the exact surface, as smaller ones were too "
            "many");
}

TEST(OffsetShapes, CubeShrunkByHalfItsWidthOrMoreIsNothing) {
  for (const double r : {5.0, 7.0, 100.0}) {
    const SweepResult run = RunOffset(Cube(10), -r, 20);
    EXPECT_TRUE(run.mesh.facets.empty());
    EXPECT_EQ(run.resets, 1);
    EXPECT_EQ(run.closes, 1);
    EXPECT_EQ(run.dialog.warnings, std::vector<std::string>{"nothing is left of the solid"});
    EXPECT_TRUE(run.dialog.errors.empty());
  }
}

TEST(OffsetShapes, OpenSheetBecomesASlabWithARoundRim) {
  formats::Mesh sheet;
  sheet.vertices = {{0, 0, 5}, {8, 0, 5}, {8, 8, 5}, {0, 8, 5}};
  sheet.facets = {{{0, 1, 2}, 1}, {{0, 2, 3}, 1}};
  const SweepResult run = RunOffset(sheet, 1, 15);
  ExpectFits(run, sheet, 1, 15);
  ExpectVolume(run, RoundedBlock(8, 8, 0, 1), 1, 15);
  EXPECT_EQ(CountPieces(run.mesh), 1);
}

TEST(OffsetShapes, CubeWithoutItsLidIsAShell) {
  formats::Mesh open = Cube(20);
  open.facets.erase(open.facets.begin() + 2, open.facets.begin() + 4);  // the upper face
  const SweepResult run = RunOffset(open, 1, 20);
  ExpectFits(run, open, 1, 20);
  EXPECT_LT(support::Volume(run.mesh), RoundedBlock(20, 20, 20, 1) - 18 * 18 * 18);
}

TEST(OffsetShapes, BodiesNearerThanTwiceTheDistanceBecomeOne) {
  formats::Mesh two = Cube(6);
  Add(two, Moved(Cube(6), 1, {9, 1, 2}));
  const SweepResult apart = RunOffset(two, 1.25, 20);
  ExpectFits(apart, two, 1.25, 20);
  EXPECT_EQ(CountPieces(apart.mesh), 2);
  const SweepResult merged = RunOffset(two, 2, 20);
  ExpectFits(merged, two, 2, 20);
  EXPECT_EQ(CountPieces(merged.mesh), 1);
}

TEST(OffsetShapes, CavityShrinksToASharpBoxAndIsFilled) {
  formats::Mesh hollow = Cube(20);
  Add(hollow, Reversed(Moved(Cube(8), 1, {6, 6, 6})));
  const SweepResult smaller = RunOffset(hollow, 1, 20);
  ExpectFits(smaller, hollow, 1, 20);
  EXPECT_EQ(CountPieces(smaller.mesh), 2);
  ExpectVolume(smaller, RoundedBlock(20, 20, 20, 1) - 6 * 6 * 6, 1, 20);
  const SweepResult filled = RunOffset(hollow, 4.5, 20);
  ExpectSound(filled);
  EXPECT_EQ(CountPieces(filled.mesh), 1);
  ExpectVolume(filled, RoundedBlock(20, 20, 20, 4.5), 4.5, 20);
}

TEST(OffsetShapes, ShrinkingRoundsACavityOutwards) {
  formats::Mesh hollow = Cube(20);
  Add(hollow, Reversed(Moved(Cube(6), 1, {7, 7, 7})));
  const SweepResult run = RunOffset(hollow, -2, 20);
  ExpectFits(run, hollow, -2, 20);
  ExpectVolume(run, 16 * 16 * 16 - RoundedBlock(6, 6, 6, 2), -2, 20);
}

TEST(OffsetShapes, TorusFitsBothWays) {
  for (const double distance : {1.5, -1.5}) {
    const formats::Mesh torus = compare_test::Torus(20, 12);
    const SweepResult run = RunOffset(torus, distance, 20);
    ExpectFits(run, torus, distance, 20);
  }
}

TEST(OffsetShapes, StepHasASharpCreaseInItsInnerCorner) {
  const formats::Mesh pitted = compare_test::PittedBlock(30, 12);
  ExpectFits(RunOffset(pitted, 3, 20), pitted, 3, 20);
  // So coarse that a cell holds the whole way from one wall to the other.
  ExpectFits(RunOffset(pitted, -3, 45), pitted, -3, 45);
}

TEST(OffsetShapes, SharpSpikeAndWedgeFit) {
  for (const formats::Mesh& mesh : {compare_test::Spike(1), compare_test::Wedge(0.5)}) {
    ExpectFits(RunOffset(mesh, 0.75, 20), mesh, 0.75, 20);
  }
}

TEST(OffsetColours, AreThoseOfTheNearestFacets) {
  formats::Mesh cube = Cube(10);
  for (std::size_t f = 0; f < 12; ++f) cube.facets[f].colour = static_cast<std::uint8_t>(f / 2);
  const SweepResult run = RunOffset(cube, 1, 30);
  ExpectSound(run);
  std::vector<int> flat(6, 0);
  for (const formats::Facet& facet : run.mesh.facets) {
    ASSERT_LT(facet.colour, 6);
    // Facets of the cube in pairs: bottom, top, front, back, left, right.
    constexpr std::size_t kAxis[] = {2, 2, 1, 1, 0, 0};
    const std::size_t axis = kAxis[facet.colour];
    const support::Point normal = support::Normal(run.mesh, facet);
    const double outward = facet.colour % 2 == 0 ? -normal[axis] : normal[axis];
    // On a rounded edge or corner the faces beside it are as near as each other.
    EXPECT_GT(outward, -0.15);
    for (std::size_t k = 0; k < 3; ++k) {
      if (k != axis) {
        EXPECT_LT(std::abs(normal[k]), 0.9999);
      }
    }
    if (outward > 0.999) ++flat[facet.colour];
  }
  for (const int count : flat) EXPECT_GT(count, 0);
}

TEST(OffsetFrame, MovedAndScaledInputGivesTheMovedAndScaledResult) {
  const formats::Mesh here = compare_test::Torus(12, 8);
  const double allowed = Allowed(1, 40);
  const double volume = support::Volume(RunOffset(here, 1, 40).mesh);
  // The lattice starts at the box, so that a move by a power of two moves it as well.
  const formats::Mesh moved = Moved(here, 1, {4096, -8192, 2048});
  const SweepResult far = RunOffset(moved, 1, 40);
  ExpectFits(far, moved, 1, 40);
  EXPECT_NEAR(support::Volume(far.mesh), volume, allowed * AreaOf(far.mesh));
  for (const double factor : {1e-6, 1e6}) {
    SCOPED_TRACE(factor);
    const formats::Mesh scaled = Moved(here, factor, {0, 0, 0});
    const SweepResult run = RunOffset(scaled, factor, 40);
    ExpectFits(run, scaled, factor, 40);
    EXPECT_NEAR(support::Volume(run.mesh) / std::pow(factor, 3), volume,
                allowed * AreaOf(far.mesh));
  }
}

}  // namespace
}  // namespace offset_test
