#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"
#include "support/geometry/MovedTools.h"
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
