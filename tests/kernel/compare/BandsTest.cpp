// Which facets a comparison splits, and the colours it gives.

#include <gtest/gtest.h>

#include "CompareRun.h"
#include "Solids.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"

namespace compare_test {
namespace {

TEST(CompareBands, PartLikeTheStockComesOutUnsplit) {
  ExpectUnsplit(RunCompare(Block(), Block(), kThree), Block(), 2);
}

TEST(CompareBands, PitInTheMiddleOfAFaceOfTwoFacetsIsFound) {
  ASSERT_EQ(support::ClosedFault(PittedBlock(3, 5)), "");
  const formats::Mesh stock = PittedBlock(3, 5);
  const SweepResult run = RunCompare(Block(), stock, kThree);
  ExpectSound(run);
  ExpectColours(run, Block(), stock, kThree);
  // Further than 0.05 from the rim.
  EXPECT_NEAR(AreaOf(run.mesh, 1), 2.9 * 2.9, 0.3);
  EXPECT_EQ(AreaOf(run.mesh, 3), 0);
}

TEST(CompareBands, FacetTakesTheFirstLimitThatIsNotBelowItsDeviation) {
  // The part lies 2 inside the stock on all sides.
  const formats::Mesh part = support::Box({2, 2, 2}, {28, 28, 28}, 7);
  const formats::Mesh stock = support::Box({0, 0, 0}, {30, 30, 30}, 7);
  ExpectUnsplit(RunCompare(part, stock, {{1, 2, 3}, {11, 12, 13}, 14}), part, 12);
  ExpectUnsplit(RunCompare(part, stock, {{1, 1.9, 1.99}, {11, 12, 13}, 14}), part, 14);
  ExpectUnsplit(RunCompare(part, stock, {{2.1}, {11}, 14}), part, 11);
  // The other way round all of it is outside, by 2 to 3.5.
  ExpectUnsplit(RunCompare(stock, part, {{-3.5, -1.9, 5}, {11, 12, 13}, 14}), stock, 12);
  ExpectUnsplit(RunCompare(stock, part, {{-3.5}, {11}, 14}), stock, 14);
}

TEST(CompareBands, LimitsAreTakenInAscendingOrderEachWithItsColour) {
  const formats::Mesh part = support::Box({2, 2, 2}, {28, 28, 28}, 7);
  const formats::Mesh stock = support::Box({0, 0, 0}, {30, 30, 30}, 7);
  ExpectUnsplit(RunCompare(part, stock, {{3, -1, 1, 2.5}, {13, 10, 11, 12}, 14}), part, 12);
}

TEST(CompareBands, OfEqualLimitsTheFirstGivenCounts) {
  ExpectUnsplit(RunCompare(Block(), Block(), {{1, 1, -1, -1}, {11, 12, 13, 14}, 15}), Block(), 11);
}

TEST(CompareBands, Colour256IsTheByte0) {
  ExpectUnsplit(RunCompare(Block(), Block(), {{-1, 1}, {3, 256}, 4}), Block(), 0);
  ExpectUnsplit(RunCompare(Block(), Block(), {{-1, -0.5}, {3, 4}, 256}), Block(), 0);
}

// The same faces in other facets: deviations are zero but for rounding.
TEST(CompareBands, FacesThatCoincideAreAtALimitOfZero) {
  const formats::Mesh finer = RunCompare(Block(), PittedBlock(3, 5), kThree).mesh;
  ASSERT_GT(finer.facets.size(), 1000U);
  ExpectUnsplit(RunCompare(Block(), finer, {{-100, 0}, {1, 2}, 3}), Block(), 2);
  ExpectUnsplit(RunCompare(finer, Block(), {{-100, 0}, {1, 2}, 3}), finer, 2);
  ExpectUnsplit(RunCompare(Torus(30, 20), Torus(30, 20), {{-1, 0, 1}, {1, 2, 3}, 4}), Torus(30, 20),
                2);
}

TEST(CompareBands, FarFacesAreHeldWithoutSplitting) {
  const formats::Mesh part = Moved(Block(), 1, {0, 0, 50});
  // Oblique to the axes: a pyramid above and below.
  const formats::Mesh stock = Moved(Spike(6), 10, {50, 40, -150});
  ExpectUnsplit(RunCompare(part, stock, {{-400, -20}, {1, 2}, 3}), part, 2);
}

TEST(CompareBands, LevelFacesInDifferentFacetsAreHeldWithoutSplitting) {
  // The pit is too shallow to count; part and stock share no diagonal on the upper face.
  ExpectUnsplit(RunCompare(Block(), PittedBlock(40, 0.04), kThree), Block(), 2);
  ExpectUnsplit(RunCompare(PittedBlock(40, 0.04), Block(), kThree), PittedBlock(40, 0.04), 2);
}

TEST(CompareBands, NarrowBandsOnLevelFacesAreHeldWithoutSplitting) {
  ExpectUnsplit(RunCompare(Block(), PittedBlock(40, 1e-6), {{-2e-6, 2e-6}, {1, 2}, 3}), Block(), 2);
}

TEST(CompareBands, MaterialLeftStandingIsFound) {
  const formats::Mesh stock = PittedBlock(3, -2);
  ASSERT_EQ(support::ClosedFault(stock), "");
  const SweepResult run = RunCompare(Block(), stock, kThree);
  ExpectSound(run);
  ExpectColours(run, Block(), stock, kThree);
  EXPECT_NEAR(AreaOf(run.mesh, 3), 2.9 * 2.9, 0.3);
  EXPECT_EQ(AreaOf(run.mesh, 1), 0);
}

TEST(CompareBands, GougeAtAnEdgeSplitsBothFacesTogether) {
  const formats::Mesh part = Block();
  formats::Mesh stock = Block();
  for (auto& vertex : stock.vertices) {
    if (vertex[0] == 100 && vertex[2] == 30) vertex[0] = 99;
  }
  const Bands bands = {{-0.6, -0.3, -0.1, 0.1}, {1, 2, 3, 4}, 5};
  const SweepResult run = RunCompare(part, stock, bands);
  ExpectSound(run);
  ExpectColours(run, part, stock, bands);
  EXPECT_GT(AreaOf(run.mesh, 1), 0);
}

TEST(CompareBands, CurvedPartAgainstACoarserStockIsRightEverywhere) {
  const formats::Mesh part = Torus(20, 12);
  const formats::Mesh stock = Torus(14, 9);
  const Bands bands = {{-0.3, 0.1, 0.3}, {1, 2, 3}, 4};
  const SweepResult run = RunCompare(part, stock, bands);
  ExpectSound(run);
  ExpectColours(run, part, stock, bands);
}

// Its left half gouged, its right half standing: signs tell bands of one width apart.
TEST(CompareBands, UnevenBandsAroundZeroAreRightEverywhere) {
  formats::Mesh stock = Block();
  for (auto& vertex : stock.vertices) {
    if (vertex[2] == 30) vertex[2] += vertex[0] == 0 ? -2 : 2;
  }
  const Bands bands = {{-0.5, 3}, {1, 2}, 3};
  const SweepResult run = RunCompare(Block(), stock, bands);
  ExpectSound(run);
  ExpectColours(run, Block(), stock, bands);
  EXPECT_EQ(AreaOf(run.mesh, 3), 0);
  // The upper face is gouged by more than 0.5 over x below 37.5, the wall at x = 0 likewise.
  EXPECT_NEAR(AreaOf(run.mesh, 1), 37.5 * 80, 250);
}

// The number of the facet that a point of the mesh's surface lies in.
std::size_t FacetAt(const formats::Mesh& mesh, const support::Point& point) {
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    const auto [a, b, c] = support::Corners(mesh, mesh.facets[f]);
    if (support::DistanceToTriangle(point, a, b, c) < 1e-9) return f;
  }
  return mesh.facets.size();
}

TEST(CompareBands, PiecesTakeThePlaceOfTheirFacetAndTheOthersStay) {
  const formats::Mesh part = Block();
  const SweepResult run = RunCompare(part, PittedBlock(3, 5), kThree);
  std::size_t last = 0;
  std::vector<std::size_t> pieces(part.facets.size());
  for (const formats::Facet& facet : run.mesh.facets) {
    const std::size_t of = FacetAt(part, support::Centre(run.mesh, facet));
    ASSERT_LT(of, part.facets.size());
    EXPECT_GE(of, last);
    last = of;
    ++pieces[of];
  }
  // The lower face is facets 0 and 1, the upper one 2 and 3.
  for (const std::size_t f : {std::size_t{0}, std::size_t{1}}) {
    EXPECT_EQ(support::Corners(run.mesh, run.mesh.facets[f]),
              support::Corners(part, part.facets[f]));
    EXPECT_EQ(pieces[f], 1U);
  }
  EXPECT_GT(pieces[2], 100U);
  EXPECT_GT(pieces[3], 100U);
}

TEST(CompareBands, OpenPartIsComparedAsItIs) {
  formats::Mesh part = Block();
  part.facets.erase(part.facets.begin() + 4, part.facets.end());
  const SweepResult run = RunCompare(part, PittedBlock(3, 5), kThree);
  EXPECT_TRUE(run.dialog.errors.empty());
  EXPECT_TRUE(run.dialog.warnings.empty());
  ExpectColours(run, part, PittedBlock(3, 5), kThree);
  EXPECT_NEAR(AreaOf(run.mesh, 1) + AreaOf(run.mesh, 2), 2 * 8000, 1e-6);
}

TEST(CompareBands, BodiesOfThePartThatTouchKeepVerticesOfTheirOwn) {
  formats::Mesh part = support::Box({0, 0, 0}, {10, 10, 10}, 1);
  Add(part, support::Box({10, 10, 0}, {20, 20, 10}, 1));  // a common edge
  const formats::Mesh stock = support::Box({0, 0, 0}, {20, 20, 10}, 1);
  const Bands bands = {{-1, 0.5, 3}, {1, 2, 3}, 4};
  const SweepResult run = RunCompare(part, stock, bands);
  ExpectSound(run);
  ExpectColours(run, part, stock, bands);
}

TEST(CompareBands, NestedVoidOfTheStockIsAGouge) {
  formats::Mesh stock = Block();
  Add(stock, Reversed(support::Box({20, 20, 10}, {60, 60, 20}, 1)));
  const formats::Mesh part = support::Box({30, 30, 12}, {50, 50, 18}, 1);
  ExpectUnsplit(RunCompare(part, stock, {{-1.9, 0}, {1, 2}, 3}), part, 1);
}

}  // namespace
}  // namespace compare_test
