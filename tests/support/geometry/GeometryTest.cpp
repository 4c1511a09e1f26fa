#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

#include "support/geometry/ExactOffset.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"
#include "support/geometry/MovedTools.h"
#include "support/geometry/OffsetDeviation.h"
#include "support/geometry/PlainDeviation.h"
#include "support/geometry/RayWinding.h"
#include "support/geometry/SweepInputs.h"

namespace support {
namespace {

TEST(MeshChecks, BoxIsClosedOutwardAndHasItsVolume) {
  const formats::Mesh box = Box({1, 2, 3}, {4, 6, 8}, 7);
  EXPECT_EQ(ClosedFault(box), "");
  EXPECT_EQ(ZeroAreaFault(box), "");
  EXPECT_EQ(VertexFault(box), "");
  EXPECT_DOUBLE_EQ(Volume(box), 60);
}

TEST(MeshChecks, MissingTurnedAndDoubledFacetsAreFound) {
  formats::Mesh box = Box({0, 0, 0}, {1, 1, 1}, 0);
  const formats::Facet last = box.facets.back();
  box.facets.pop_back();
  EXPECT_NE(ClosedFault(box), "");
  box.facets.push_back(last);
  std::swap(box.facets.back().vertices[0], box.facets.back().vertices[1]);
  EXPECT_NE(ClosedFault(box), "");
  box.facets.back() = last;
  EXPECT_EQ(ClosedFault(box), "");
  box.facets.push_back(last);
  EXPECT_NE(ClosedFault(box), "");
  box.facets.back().vertices = {0, 1, 99};
  EXPECT_NE(ClosedFault(box), "");
}

TEST(MeshChecks, FacetWithoutAreaIsFound) {
  formats::Mesh line;
  line.vertices = {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}};
  line.facets = {{{0, 1, 2}, 0}};
  EXPECT_NE(ZeroAreaFault(line), "");
}

TEST(MeshChecks, VertexSharedByTwoBodiesIsFound) {
  formats::Mesh two = Box({0, 0, 0}, {1, 1, 1}, 0);
  const formats::Mesh other = Box({1, 1, 1}, {2, 2, 2}, 0);
  for (const auto& vertex : other.vertices) two.vertices.push_back(vertex);
  for (formats::Facet facet : other.facets) {
    for (auto& number : facet.vertices) number = number == 0 ? 7 : number + 8;
    two.facets.push_back(facet);
  }
  EXPECT_EQ(ClosedFault(two), "");
  EXPECT_NE(VertexFault(two), "");
}

TEST(MeshDistance, IsThatToTheNearestFaceEdgeOrCorner) {
  const formats::Mesh box = Box({0, 0, 0}, {2, 2, 2}, 0);
  const MeshDistance distance(box);
  EXPECT_DOUBLE_EQ(distance.To({1, 1, 5}), 3);
  EXPECT_DOUBLE_EQ(distance.To({1, 1.5, 1}), 0.5);
  EXPECT_DOUBLE_EQ(distance.To({5, 6, 1}), 5);
  EXPECT_DOUBLE_EQ(distance.To({3, 4, 4}), 3);
  EXPECT_EQ(MeshDistance(formats::Mesh{}).To({0, 0, 0}), std::numeric_limits<double>::infinity());
}

TEST(MeshDistance, NearestPointLiesOnFaceEdgeOrCorner) {
  const Point a = {0, 0, 0}, b = {4, 0, 0}, c = {0, 4, 0};
  EXPECT_EQ(NearestOnTriangle({1, 1, 5}, a, b, c), (Point{1, 1, 0}));
  EXPECT_EQ(NearestOnTriangle({2, -3, 1}, a, b, c), (Point{2, 0, 0}));
  EXPECT_EQ(NearestOnTriangle({4, 4, 1}, a, b, c), (Point{2, 2, 0}));
  EXPECT_EQ(NearestOnTriangle({9, -1, 1}, a, b, c), (Point{4, 0, 0}));
}

TEST(RayWinding, IsThatOfTheSolidAngles) {
  formats::Mesh solid = Box({0, 0, 0}, {4, 4, 4}, 0);
  const auto add = [&](const formats::Mesh& other) {
    const auto first = static_cast<std::int32_t>(solid.vertices.size());
    solid.vertices.insert(solid.vertices.end(), other.vertices.begin(), other.vertices.end());
    for (formats::Facet facet : other.facets) {
      for (std::int32_t& vertex : facet.vertices) vertex += first;
      solid.facets.push_back(facet);
    }
  };
  add(Box({3, 3, 3}, {6, 6, 6}, 0));  // overlaps the first
  formats::Mesh cavity = Box({1, 1, 1}, {2, 2, 2}, 0);
  for (formats::Facet& facet : cavity.facets) std::swap(facet.vertices[0], facet.vertices[1]);
  add(cavity);
  const RayWinding winding(solid);
  for (int i = 0; i < 1000; ++i) {
    const Point point = {0.77 * (i % 10) - 0.7, 0.77 * (i / 10 % 10) - 0.6, 0.77 * (i / 100) - 0.5};
    EXPECT_NEAR(winding.Of(point), WindingNumber(solid, point), 1e-9);
  }
  EXPECT_EQ(winding.Of({3.5, 3.5, 3.5}), 2);
  EXPECT_EQ(winding.Of({1.5, 1.5, 1.5}), 0);
}

TEST(ExactOffset, OfABoxIsKnown) {
  const formats::Mesh box = Box({0, 0, 0}, {10, 10, 10}, 0);
  const ExactOffset grown(box, 2);
  const Point up = {0, 0, 1};
  EXPECT_NEAR(grown.Off({5, 5, 12.25}, up), 0.25, 1e-6);
  EXPECT_NEAR(grown.Off({5, 5, 11.5}, up), 0.5, 1e-6);
  EXPECT_NEAR(grown.Off({5, 5, 9.5}, up), 2.5, 1e-6);  // in the box, within the band
  EXPECT_NEAR(grown.Off({5, 5, 5}, up), 7, 1e-6);
  EXPECT_EQ(grown.Above({5, 5, 10}, up), (Point{5, 5, 12}));
  EXPECT_EQ(grown.Above({5, 5, 10}, {0, 0, -1}), std::nullopt);
  const ExactOffset shrunk(box, -2);
  EXPECT_NEAR(shrunk.Off({5, 5, 7.75}, up), 0.25, 1e-6);
  EXPECT_NEAR(shrunk.Off({5, 5, 12}, up), 4, 1e-6);
  // In the corner of the smaller box, though only 1 from each of three faces.
  EXPECT_NEAR(shrunk.Off({9, 9, 9}, {1, 0, 0}), std::sqrt(3.0), 1e-6);
  // Above a point near the edge the other face's band is left at the edge of the smaller box.
  const std::optional<Point> crease = shrunk.Above({9, 5, 10}, {0, 0, -1});
  ASSERT_TRUE(crease);
  EXPECT_NEAR(Length(Minus(*crease, {8, 5, 8})), 0, 1e-6);
}

TEST(OffsetDeviation, OfAnExactOffsetIsNoneAndPlacesBeyondAreNoted) {
  const formats::Mesh box = Box({0, 0, 0}, {10, 10, 10}, 0);
  const OffsetDeviation none = DeviationOfOffset(box, -2, Box({2, 2, 2}, {8, 8, 8}, 0), {1, 1e-6});
  EXPECT_GT(none.exactPoints, 100U);
  EXPECT_LE(none.ofResult, 1e-6);
  EXPECT_LE(none.ofExact, 1e-6);
  EXPECT_TRUE(none.resultBeyond.empty() && none.exactBeyond.empty());
  // One face half a unit too low: its corners and those of the exact surface.
  const OffsetDeviation low = DeviationOfOffset(box, -2, Box({2, 2, 2}, {8, 8, 7.5}, 0), {1, 0.4});
  EXPECT_NEAR(low.ofResult, 0.5, 1e-6);
  EXPECT_NEAR(low.ofExact, 0.5, 1e-6);
  EXPECT_GE(low.resultBeyond.size(), 4U);
  EXPECT_GE(low.exactBeyond.size(), 4U);
}

TEST(MovedTools, BallIsACapsuleUnderItsShank) {
  MovedTools ball(5, 0);
  ball.AddCut({{0, 0, 0}, {10, 0, 0}});
  EXPECT_NEAR(ball.SignedDistance({5, 0, -1}, 9), 1, 1e-12);
  EXPECT_NEAR(ball.SignedDistance({5, 3, 1}, 9), 0, 1e-12);
  EXPECT_NEAR(ball.SignedDistance({5, 8, 50}, 9), 3, 1e-12);
  EXPECT_NEAR(ball.SignedDistance({14, 0, 5}, 9), -1, 1e-12);
  EXPECT_NEAR(ball.SignedDistance({13, 4, -7}, 9), std::hypot(5, 12) - 5, 1e-12);
}

TEST(MovedTools, FlatCutterHasFloorWallAndEdge) {
  MovedTools flat(0, 6);
  flat.AddCut({{0, 0, 30}, {10, 0, 30}});
  flat.AddCut({{100, 0, 30}});
  EXPECT_NEAR(flat.SignedDistance({5, 0, 31}, 9), -1, 1e-12);
  EXPECT_NEAR(flat.SignedDistance({5, 9, 26}, 9), 5, 1e-12);
  EXPECT_NEAR(flat.SignedDistance({5, 5.5, 40}, 9), -0.5, 1e-12);
  EXPECT_NEAR(flat.SignedDistance({107, 0, 40}, 9), 1, 1e-12);
  EXPECT_EQ(flat.SignedDistance({50, 0, 40}, 9), std::numeric_limits<double>::infinity());
}

TEST(MovedTools, SurfacePointsLieOnTheSurface) {
  MovedTools bull(1, 4);
  bull.AddCut({{0, 0, 0}, {10, 0, 0}, {10, 10, 2}});
  const std::vector<Point> points = bull.SurfacePoints({-6.1, -6.1, -1.1}, {16, 16, 4}, 0.7);
  EXPECT_GT(points.size(), 400U);
  for (const Point& point : points) EXPECT_NEAR(bull.SignedDistance(point, 1), 0, 1e-12);
}

TEST(MeshChecks, FarthestFromSurfaceLooksAtVerticesAndCentresOfOneColour) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 3);
  mesh.facets[0].colour = 4;
  const auto height = [](const Point& point) { return point[2]; };
  EXPECT_DOUBLE_EQ(FarthestFromSurface(mesh, 3, height), 1);
  EXPECT_DOUBLE_EQ(FarthestFromSurface(mesh, 4, height), 0);
  EXPECT_DOUBLE_EQ(FarthestFromMesh({{0.5, 0.5, 3}, {0, 0, 0}}, mesh), 2);
}

std::size_t Moves(const SweepInput& input) { return input.path.cuts[0].coordinates.size() / 3 - 1; }

TEST(SweepInputs, HaveTheirNumberOfMovesAndStartAndEndInTheCorners) {
  EXPECT_EQ(Moves(SweepInputA()), 5150U);
  EXPECT_EQ(Moves(SweepInputB()), 40500U);
  EXPECT_EQ(Moves(SweepInputC()), 35U);
  EXPECT_DOUBLE_EQ(Volume(SweepInputA().stock), 500000);
  const std::vector<double> a = SweepInputA().path.cuts[0].coordinates;
  EXPECT_EQ((Point{a[0], a[1], a[2]}), (Point{0, 0, 40}));
  // The second row runs back from x = 100 at y = 2.
  EXPECT_EQ((Point{a[303], a[304], a[305]}),
            (Point{100, 2, 40 + 5 * std::sin(10.0) * std::cos(0.2)}));
  const std::vector<double> c = SweepInputC().path.cuts[0].coordinates;
  EXPECT_EQ((Point{c[105], c[106], c[107]}), (Point{16, 84, 30}));
}

TEST(SweepInputs, PocketHasTheVolumeOfARoundedSquareLessTheScallopsAtItsEnds) {
  // Between two row ends that no move joins, 4 apart, two arcs of radius 6 leave a cusp.
  const double cusp = 4 * 6 - (2 * std::sqrt(32.0) + 36 * std::asin(1.0 / 3));
  const double area = 68 * 68 + 4 * 68 * 6 + 36 * std::numbers::pi - 17 * cusp;
  EXPECT_NEAR(SweepInputC().volumeLeft, 500000 - 20 * area, 0.005);
}

}  // namespace
}  // namespace support
