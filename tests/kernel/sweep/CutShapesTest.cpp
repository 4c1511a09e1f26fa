// What comes out of the sweep against answers that can be worked out by hand.

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <set>

#include "Fits.h"
#include "SweepRun.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/PlainTool.h"

namespace sweep_test {
namespace {

using support::Point;

constexpr double kPi = std::numbers::pi;
constexpr double kTolerance = 0.025;
constexpr std::uint8_t kCut = 2;
constexpr Point kHigh = {40, 30, 20};

formats::Mesh Block() { return support::Box({0, 0, 0}, kHigh, 1); }

constexpr double kBlockVolume = 40 * 30 * 20;
constexpr double kDiagonal = 53.85;

// How far the vertices of the cut facets that face upwards lie from the floor.
double FloorError(const formats::Mesh& mesh, double floor) {
  double worst = 0;
  std::size_t facets = 0;
  for (const formats::Facet& facet : mesh.facets) {
    if (facet.colour != kCut || support::Normal(mesh, facet)[2] < 0.5) continue;
    ++facets;
    for (const Point& p : support::Corners(mesh, facet)) {
      worst = std::max(worst, std::abs(p[2] - floor));
    }
  }
  return facets > 0 ? worst : 1e300;
}

// The tools' surface inside the block.
void ExpectFits(const SweepResult& run, const support::MovedTools& tools) {
  sweep_test::ExpectFits(run, tools, kCut, kTolerance, {0.3, 0.3, 0.3}, {39.7, 29.7, 19.7});
}

TEST(CutShapes, FlatCutterLeavesASlotWithARoundEndAtEachSide) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(4), kTolerance, {{12, 15, 13}, {28, 15, 13}})});
  ExpectSound(run.mesh);
  const double area = 16 * 8 + kPi * 16;
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - area * 7, kTolerance * area);
  EXPECT_LE(FloorError(run.mesh, 13), 1e-9 * kDiagonal);
  support::MovedTools tools(0, 4);
  tools.AddCut({{12, 15, 13}, {28, 15, 13}});
  ExpectFits(run, tools);
}

TEST(CutShapes, SlotThroughTheBlockHasOnlyExactPlanes) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(4), kTolerance, {{-10, 15, 13}, {50, 15, 13}})});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 40 * 8 * 7, 1e-6);
  const std::set<double> ys = {0, 11, 19, 30};
  for (const auto& vertex : run.mesh.vertices) {
    EXPECT_TRUE(std::any_of(ys.begin(), ys.end(), [&](double y) {
      return std::abs(vertex[1] - y) < 1e-9 * kDiagonal;
    })) << vertex[1];
  }
  // Two facets a rectangle: 6 outer sides with the slot's outline in two, 3 inner ones.
  EXPECT_LE(run.mesh.facets.size(), 28U);
}

TEST(CutShapes, PocketHasItsVolumeAndAFlatFloor) {
  std::vector<Point> tips;
  for (int row = 0; row < 4; ++row) {
    const double y = 9 + 4 * row;
    tips.push_back({row % 2 == 0 ? 10.0 : 30.0, y, 12});
    tips.push_back({row % 2 == 0 ? 30.0 : 10.0, y, 12});
  }
  const SweepResult run = RunSweep(Block(), {PathOf(Flat(5), kTolerance, tips)});
  ExpectSound(run.mesh);
  // Rounded rectangle of 30 by 22, less the cusps that rows 4 apart leave at the end walls. Where
  // the zigzag steps over at an end it cuts that wall straight.
  const double cusp = 4 * 5 - 2 * (std::sqrt(21.0) + 12.5 * std::asin(0.4));
  const double area = 20 * 22 + 12 * 10 + kPi * 25 - 3 * cusp;
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - area * 8, kTolerance * 8 * 90);
  EXPECT_LE(FloorError(run.mesh, 12), 1e-9 * kDiagonal);
  support::MovedTools tools(0, 5);
  tools.AddCut(tips);
  ExpectFits(run, tools);
}

TEST(CutShapes, BallCutterLeavesAGrooveOfItsRadius) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Ball(4), kTolerance, {{-10, 14, 17}, {50, 16, 18}})});
  ExpectSound(run.mesh);
  support::MovedTools tools(4, 0);
  tools.AddCut({{-10, 14, 17}, {50, 16, 18}});
  ExpectFits(run, tools);
}

TEST(CutShapes, LevelGrooveHasItsVolume) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Ball(4), kTolerance, {{-10, 15, 14}, {50, 15, 14}})});
  ExpectSound(run.mesh);
  const double section = kPi * 16 / 2 + 8 * 2;
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 40 * section,
              kTolerance * 40 * (kPi * 4 + 4));
}

TEST(CutShapes, RasterOfGroovesKeepsItsCusps) {
  std::vector<Point> tips;
  for (int row = 0; row < 7; ++row) {
    const double y = 6 + 3 * row;
    tips.push_back({row % 2 == 0 ? -8.0 : 48.0, y, 16});
    tips.push_back({row % 2 == 0 ? 48.0 : -8.0, y, 16});
  }
  const SweepResult run = RunSweep(Block(), {PathOf(Ball(4), kTolerance, tips)});
  ExpectSound(run.mesh);
  support::MovedTools tools(4, 0);
  tools.AddCut(tips);
  ExpectFits(run, tools);
  // The cusps stand 4 - sqrt(16 - 1.5^2) above the grooves' floor and stay sharp.
  const double cusp = 16 + 4 - std::sqrt(16 - 2.25);
  double highest = 0;
  for (const formats::Facet& facet : run.mesh.facets) {
    if (facet.colour != kCut) continue;
    for (const Point& p : support::Corners(run.mesh, facet)) {
      if (p[1] > 6 && p[1] < 24) highest = std::max(highest, p[2]);
    }
  }
  EXPECT_NEAR(highest, cusp, 1e-6);
}

TEST(CutShapes, BullNoseRoundsTheFootOfTheWall) {
  const std::vector<Point> tips = {{10, 10, 12}, {30, 12, 14}, {28, 21, 13}};
  const SweepResult run = RunSweep(Block(), {PathOf(BullNose(4, 1.5), kTolerance, tips)});
  ExpectSound(run.mesh);
  support::MovedTools tools(1.5, 2.5);
  tools.AddCut(tips);
  ExpectFits(run, tools);
}

// The cut surface of any convex tool against the plainly computed one.
void ExpectFitsPlainTool(const formats::ConvexTool& tool, const std::vector<Point>& tips) {
  const SweepResult run = RunSweep(Block(), {PathOf(tool, kTolerance, tips)});
  ExpectSound(run.mesh);
  const support::PlainTool plain(tool);
  double worst = 0;
  std::size_t cutFacets = 0;
  const auto distance = [&](const Point& p) {
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < tips.size(); ++i) {
      nearest = std::min(nearest, plain.SweptExcess({0, 0, 1}, tips[i - 1], tips[i], p));
    }
    return std::abs(nearest);
  };
  for (const formats::Facet& facet : run.mesh.facets) {
    if (facet.colour != kCut) continue;
    ++cutFacets;
    worst = std::max(worst, distance(support::Centre(run.mesh, facet)));
    for (const Point& p : support::Corners(run.mesh, facet)) worst = std::max(worst, distance(p));
  }
  EXPECT_GT(cutFacets, 10U);
  EXPECT_LE(worst, kTolerance);
}

TEST(CutShapes, TaperedCutterFits) {
  ExpectFitsPlainTool({1, 2, 12, 90, 0, 0}, {{10, 10, 12}, {29, 20, 12}});
}

TEST(CutShapes, PointedCutterFits) {
  ExpectFitsPlainTool({0, 0, 50, 50, 4, 0}, {{10.2, 10.1, 12}, {29, 20.3, 13}});
}

TEST(CutShapes, StandingToolDrillsAHole) {
  const SweepResult run = RunSweep(Block(), {PathOf(Flat(4), kTolerance, {{20, 15, 5}})});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - kPi * 16 * 15, kTolerance * 8 * kPi * 15);
  EXPECT_LE(FloorError(run.mesh, 5), 1e-9 * kDiagonal);
}

TEST(CutShapes, NothingIsSweptBetweenTwoCuts) {
  formats::PathRecord path = PathOf(Flat(3), kTolerance, {{8, 15, 10}});
  path.cuts.push_back({{32, 15, 10}});
  const SweepResult run = RunSweep(Block(), {path});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 2 * kPi * 9 * 10,
              2 * kTolerance * 6 * kPi * 10);
}

TEST(CutShapes, MatrixAndOriginTurnAndMoveThePath) {
  // The tool comes along -x: the path's z is the stock's x.
  formats::PathRecord path = PathOf(Flat(4), kTolerance, {{-20, 0, 0}, {20, 0, 0}});
  path.matrix = {0, 0, 1, 1, 0, 0, 0, 1, 0};
  path.origin = {33, 15, 10};
  const SweepResult run = RunSweep(Block(), {path});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 7 * 30 * 8, 1e-6);
}

TEST(CutShapes, SkewFrameCutsTheSameVolume) {
  const double c = std::cos(0.3);
  const double s = std::sin(0.3);
  formats::PathRecord path = PathOf(Flat(4), kTolerance, {{-60, 0, 0}, {60, 0, 0}});
  path.matrix = {c, -s, 0, s, c, 0, 0, 0, 1};
  path.origin = {20, 15, 13};
  const SweepResult run = RunSweep(Block(), {path});
  ExpectSound(run.mesh);
  // A band of width 8 between the walls x = 0 and x = 40.
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 40 * 8 / c * 7, 1e-6);
}

TEST(CutShapes, PathOffTheStockLeavesItsOwnFacets) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Ball(4), kTolerance, {{-10, 15, 21}, {50, 15, 21}})});
  EXPECT_EQ(run.mesh.vertices, Block().vertices);
  ASSERT_EQ(run.mesh.facets.size(), Block().facets.size());
  for (std::size_t i = 0; i < run.mesh.facets.size(); ++i) {
    EXPECT_EQ(run.mesh.facets[i].vertices, Block().facets[i].vertices);
  }
  EXPECT_TRUE(run.dialog.warnings.empty());
}

TEST(CutShapes, ToolThatOnlyTouchesRemovesNothing) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(4), kTolerance, {{-10, 15, 20}, {50, 15, 20}}),
                         PathOf(Flat(4), kTolerance, {{-10, -4, 5}, {50, -4, 5}})});
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_EQ(run.mesh.vertices, Block().vertices);
}

TEST(CutShapes, NoPathLeavesTheStock) {
  const SweepResult run = RunSweep(Block(), {});
  EXPECT_EQ(run.mesh.vertices, Block().vertices);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_EQ(run.resets, 1);
  EXPECT_EQ(run.closes, 1);
}

TEST(CutShapes, PathThroughTheBlockPartsIt) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(2), kTolerance, {{20, -10, -1}, {20, 40, -1}})});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 4 * 30 * 20, 1e-6);
  EXPECT_LE(run.mesh.facets.size(), 24U);
  for (const auto& vertex : run.mesh.vertices) {
    EXPECT_TRUE(vertex[0] < 18 + 1e-7 || vertex[0] > 22 - 1e-7);
  }
}

TEST(CutShapes, PathThatRemovesAllGivesAnEmptySurfaceAndAWarning) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(60), kTolerance, {{-80, 15, -1}, {90, 15, -1}})});
  EXPECT_TRUE(run.mesh.vertices.empty());
  EXPECT_TRUE(run.mesh.facets.empty());
  EXPECT_EQ(run.resets, 1);
  EXPECT_EQ(run.closes, 1);
  EXPECT_EQ(run.dialog.warnings.size(), 1U);
  EXPECT_TRUE(run.dialog.errors.empty());
}

TEST(CutShapes, FacetsTakeThePathsColourTheLaterWhereTwoCoincide) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(4), kTolerance, {{-10, 10, 13}, {50, 10, 13}}, 5),
                         PathOf(Flat(4), kTolerance, {{-10, 14, 13}, {50, 14, 13}}, 250)});
  ExpectSound(run.mesh);
  double area[2] = {0, 0};
  for (const formats::Facet& facet : run.mesh.facets) {
    const auto [a, b, c] = support::Corners(run.mesh, facet);
    const double size =
        support::Length(support::Cross(support::Minus(b, a), support::Minus(c, a))) / 2;
    const Point centre = support::Centre(run.mesh, facet);
    const bool onFloor =
        std::abs(centre[2] - 13) < 1e-9 && centre[0] > 1e-9 && centre[0] < 40 - 1e-9;
    if (onFloor) {
      ASSERT_TRUE(facet.colour == 5 || facet.colour == 250);
      area[facet.colour == 5 ? 0 : 1] += size;
    }
    if (std::abs(centre[1] - 6) < 1e-9) {
      EXPECT_EQ(facet.colour, 5);
    }
    if (std::abs(centre[1] - 18) < 1e-9) {
      EXPECT_EQ(facet.colour, 250);
    }
    if (std::abs(centre[2] - 20) < 1e-9 || centre[2] < 1e-9) {
      EXPECT_EQ(facet.colour, 1);
    }
  }
  // The floor of the second path, 8 wide, is all its own; colour borders on a plane fall between
  // rays, so half a ray spacing either way.
  EXPECT_NEAR(area[1], 40 * 8, 40 * 0.5);
  EXPECT_NEAR(area[0] + area[1], 40 * 12, 1e-6);
}

TEST(CutShapes, TurnedStockComesOutOutwardWithAWarning) {
  formats::Mesh inward = Block();
  for (formats::Facet& facet : inward.facets) std::swap(facet.vertices[0], facet.vertices[1]);
  const SweepResult run =
      RunSweep(inward, {PathOf(Flat(4), kTolerance, {{-10, 15, 13}, {50, 15, 13}})});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 40 * 8 * 7, 1e-6);
  EXPECT_EQ(run.dialog.warnings.size(), 1U);
}

TEST(CutShapes, VerticesAtTheSamePlaceAreOne) {
  formats::Mesh soup;
  const formats::Mesh block = Block();
  for (const formats::Facet& facet : block.facets) {
    formats::Facet own = facet;
    for (std::int32_t& v : own.vertices) {
      soup.vertices.push_back(block.vertices[static_cast<std::size_t>(v)]);
      v = static_cast<std::int32_t>(soup.vertices.size()) - 1;
    }
    soup.facets.push_back(own);
  }
  const SweepResult run =
      RunSweep(soup, {PathOf(Flat(4), kTolerance, {{-10, 15, 13}, {50, 15, 13}})});
  ExpectSound(run.mesh);
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 40 * 8 * 7, 1e-6);
}

TEST(CutShapes, WallThinnerThanTheRaySpacingIsReported) {
  const double wall = 0.1;
  const SweepResult run =
      RunSweep(Block(), {PathOf(Flat(4), kTolerance, {{-10, 10, 13}, {50, 10, 13}}),
                         PathOf(Flat(4), kTolerance, {{-10, 18 + wall, 13}, {50, 18 + wall, 13}})});
  ExpectSound(run.mesh);
  // The rays of this block and cutter are about 0.44 apart, none of them in the wall.
  EXPECT_NEAR(support::Volume(run.mesh), kBlockVolume - 40 * (16 + wall) * 7, 1e-6);
  ASSERT_EQ(run.dialog.warnings.size(), 1U);
  EXPECT_NE(run.dialog.warnings[0].find("thinner than the ray spacing"), std::string::npos);
}

TEST(CutShapes, OrdinaryCutsGiveNoWarning) {
  const SweepResult run =
      RunSweep(Block(), {PathOf(Ball(4), kTolerance, {{-10, 11, 16}, {50, 11, 16}}),
                         PathOf(Ball(4), kTolerance, {{-10, 14, 16}, {50, 14, 16}})});
  EXPECT_TRUE(run.dialog.warnings.empty());
}

TEST(CutShapes, MovedJobGivesTheMovedResult) {
  const Point by = {1000.25, -300.5, 77.125};
  formats::Mesh moved = Block();
  for (auto& vertex : moved.vertices) vertex = support::Plus(vertex, by);
  formats::PathRecord path =
      PathOf(BullNose(4, 1.5), kTolerance, {{10, 10, 12}, {30, 12, 14}, {28, 21, 13}});
  const SweepResult here = RunSweep(Block(), {path});
  path.origin = by;
  const SweepResult there = RunSweep(moved, {path});
  ExpectSound(there.mesh);
  EXPECT_NEAR(support::Volume(there.mesh), support::Volume(here.mesh), 1e-6);
  std::vector<Point> points;
  for (const auto& vertex : there.mesh.vertices) points.push_back(support::Minus(vertex, by));
  EXPECT_LE(support::FarthestFromMesh(points, here.mesh), kTolerance + 1e-9 * kDiagonal);
}

TEST(CutShapes, CoarseToleranceOfOnePathGivesWayToTheFinest) {
  const std::vector<Point> tips = {{-10, 14, 17}, {50, 16, 18}};
  const SweepResult coarse = RunSweep(Block(), {PathOf(Ball(4), 0.2, tips)});
  const SweepResult both = RunSweep(
      Block(),
      {PathOf(Ball(4), 0.2, tips), PathOf(Ball(4), kTolerance, {{-10, 0, 30}, {0, 0, 30}})});
  EXPECT_GT(both.mesh.facets.size(), 2 * coarse.mesh.facets.size());
}

}  // namespace
}  // namespace sweep_test
