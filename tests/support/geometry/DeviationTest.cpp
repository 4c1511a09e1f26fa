#include <cmath>
#include <gtest/gtest.h>

#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDeviation.h"
#include "support/geometry/ScannedBall.h"

namespace support {
namespace {

constexpr double kResolution = 1e-4;

void ExpectFarthest(const Farthest& farthest, double distance) {
  EXPECT_LE(farthest.reached, distance + 1e-12);
  EXPECT_GE(farthest.bound, distance - 1e-12);
  EXPECT_LE(farthest.bound - farthest.reached, kResolution);
}

TEST(MeshDeviation, IsNothingBetweenAMeshAndItself) {
  const formats::Mesh ball = ScannedBall(6, 10, 0.1, {0, 0, 0});
  ExpectFarthest(FarthestFrom(ball, ball, kResolution), 0);
}

// Corners on a square, one of them raised: parted along the diagonal through it, or across. All
// vertices are in common. On the diagonal at share t the height is t h; the other mesh is as far
// below, and (1 - t) h / s away from there on, as its plane z = h (x + y - 1) leans by s = sqrt(1 +
// 2 h^2). Both are h / (1 + s).
TEST(MeshDeviation, IsFoundBetweenFacetsThatHaveTheirVerticesInCommon) {
  constexpr double kHeight = 0.1;
  formats::Mesh one;
  one.vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, kHeight}, {0, 1, 0}};
  one.facets = {{{0, 1, 2}, 0}, {{0, 2, 3}, 0}};
  formats::Mesh other = one;
  other.facets = {{{0, 1, 3}, 0}, {{1, 2, 3}, 0}};
  const double apart = kHeight / (1 + std::sqrt(1 + 2 * kHeight * kHeight));
  ExpectFarthest(FarthestFrom(one, other, kResolution), apart);
}

TEST(MeshDeviation, DiffersFromTheOtherWayRound) {
  const formats::Mesh cube = Box({0, 0, 0}, {1, 1, 1}, 0);
  const formats::Mesh tower = Box({0, 0, 0}, {1, 1, 4}, 0);
  // The middle of the cube's top is as far from the tower's sides; the tower's top is above it all.
  ExpectFarthest(FarthestFrom(cube, tower, kResolution), 0.5);
  ExpectFarthest(FarthestFrom(tower, cube, kResolution), 3);
}

TEST(ScannedBall, IsClosedAndAsNoisyAsAsked) {
  const formats::Mesh ball = ScannedBall(20, 10, 0.1, {100, 0, 0});
  EXPECT_EQ(ball.facets.size(), 8U * 20 * 20);
  EXPECT_EQ(ball.vertices.size(), 4U * 20 * 20 + 2);
  EXPECT_EQ(ClosedFault(ball), "");
  EXPECT_EQ(VertexFault(ball), "");
  EXPECT_GT(Volume(ball), 0);
  double least = 1e300;
  double most = 0;
  for (const Point& vertex : ball.vertices) {
    const double radius = Length(Minus(vertex, {100, 0, 0}));
    least = std::min(least, radius);
    most = std::max(most, radius);
  }
  EXPECT_GE(least, 9.9);
  EXPECT_LT(least, 9.91);
  EXPECT_LE(most, 10.1);
  EXPECT_GT(most, 10.09);
}

}  // namespace
}  // namespace support
