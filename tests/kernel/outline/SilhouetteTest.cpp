// Shadows of known shape, and of random facets against a plain test of points.

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

#include "OutlineRun.h"
#include "support/geometry/MeshChecks.h"

namespace outline_test {
namespace {

using support::Box;

double PolygonArea(double radius, int corners) {
  return corners / 2.0 * radius * radius * std::sin(2 * std::numbers::pi / corners);
}

TEST(Silhouette, OfABoxIsItsFourCornersCounterClockwiseAtTheLowestZ) {
  const SilhouetteResult run = RunSilhouette(Box({1, 2, 3}, {4, 6, 8}, 1));
  ExpectSilent(run.dialog);
  ASSERT_EQ(run.curves.curves.size(), 1U);
  ExpectCurve(run.curves.curves[0], {{1, 2}, {4, 2}, {4, 6}, {1, 6}});
  EXPECT_EQ(run.curves.heights, std::vector<double>(4, 3));
}

TEST(Silhouette, OfABallIsItsEquator) {
  const SilhouetteResult run = RunSilhouette(Ball(10, 48));
  ASSERT_EQ(run.curves.curves.size(), 1U);
  EXPECT_EQ(run.curves.curves[0].size(), 48U);
  EXPECT_NEAR(Area(run.curves), PolygonArea(10, 48), 1e-9);
}

TEST(Silhouette, OfATorusSeenAlongItsAxisHasAClockwiseHole) {
  const SilhouetteResult run = RunSilhouette(Torus(10, 4, 40, 24));
  ASSERT_EQ(run.curves.curves.size(), 2U);
  EXPECT_NEAR(Area(run.curves.curves[0]), PolygonArea(14, 40), 1e-9);
  EXPECT_NEAR(Area(run.curves.curves[1]), -PolygonArea(6, 40), 1e-9);
}

// Seen along x it is all points within 4 of the stretch from -10 to 10.
TEST(Silhouette, OfATorusSeenFromTheSideIsAStadium) {
  const formats::Mesh torus = Mapped(Torus(10, 4, 160, 96), [](const auto& v) {
    return std::array<double, 3>{v[1], v[2], v[0]};
  });
  const SilhouetteResult run = RunSilhouette(torus);
  ASSERT_EQ(run.curves.curves.size(), 1U);
  const double sagitta = 14 * (1 - std::cos(std::numbers::pi / 96));
  for (const Point& point : run.curves.curves[0]) {
    const double beyond = std::max(std::abs(point.x) - 10, 0.0);
    const double from = std::hypot(beyond, point.y);
    EXPECT_LE(from, 4 + 1e-9);
    EXPECT_GE(from, 4 - sagitta);
  }
}

TEST(Silhouette, OfALyingConeIsATriangle) {
  const formats::Mesh cone = Mapped(Turned({{0, 9}, {3, 0}, {0, 0}}, 32), [](const auto& v) {
    return std::array<double, 3>{v[2], v[0], v[1]};
  });
  const SilhouetteResult run = RunSilhouette(cone);
  ASSERT_EQ(run.curves.curves.size(), 1U);
  ExpectCurve(run.curves.curves[0], {{0, -3}, {9, 0}, {0, 3}}, 1e-12);
}

TEST(Silhouette, OfAFrameOfOverlappingBarsHasOneHole) {
  formats::Mesh frame = Box({0, 0, 0}, {10, 2, 1}, 1);
  Add(frame, Box({0, 8, 0}, {10, 10, 1}, 1));
  Add(frame, Box({0, 0, 5}, {2, 10, 6}, 1));
  Add(frame, Box({8, 1, 5}, {10, 9, 6}, 1));
  const SilhouetteResult run = RunSilhouette(frame);
  ASSERT_EQ(run.curves.curves.size(), 2U);
  ExpectCurve(run.curves.curves[0], {{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  ExpectCurve(run.curves.curves[1], {{2, 2}, {2, 8}, {8, 8}, {8, 2}});
}

TEST(Silhouette, OfABodyInsideAnothersShadowIsTheOthers) {
  formats::Mesh mesh = Box({0, 0, 0}, {10, 10, 1}, 1);
  Add(mesh, Moved(Ball(2, 24), 1, {5, 5, 20}));
  const SilhouetteResult run = RunSilhouette(mesh);
  ASSERT_EQ(run.curves.curves.size(), 1U);
  ExpectCurve(run.curves.curves[0], {{0, 0}, {10, 0}, {10, 10}, {0, 10}});
}

TEST(Silhouette, OfBoxesThatTouchAtACornerIsACurveEach) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  Add(mesh, Box({1, 1, 0}, {2, 2, 1}, 1));
  const SilhouetteResult run = RunSilhouette(mesh);
  ASSERT_EQ(run.curves.curves.size(), 2U);
  ExpectCurve(run.curves.curves[0], {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
  ExpectCurve(run.curves.curves[1], {{1, 1}, {2, 1}, {2, 2}, {1, 2}});
}

TEST(Silhouette, HoleThatTouchesTheBorderIsACurveOfItsOwn) {
  // A square of eight facets around a hole with a corner on its left side.
  formats::Mesh mesh;
  mesh.vertices = {{0, 0, 0}, {8, 0, 0}, {8, 8, 0}, {0, 8, 0},
                   {0, 4, 0}, {4, 2, 0}, {6, 4, 0}, {4, 6, 0}};
  mesh.facets = {{{0, 5, 4}}, {{0, 1, 5}}, {{1, 6, 5}}, {{1, 2, 6}},
                 {{2, 7, 6}}, {{2, 3, 7}}, {{3, 4, 7}}};
  const SilhouetteResult run = RunSilhouette(mesh);
  ASSERT_EQ(run.curves.curves.size(), 2U);
  EXPECT_NEAR(Area(run.curves.curves[0]), 64, 1e-9);
  ExpectCurve(run.curves.curves[1], {{0, 4}, {4, 6}, {6, 4}, {4, 2}});
}

TEST(Silhouette, FacetsCountWhicheverWayTheyFaceAndHoweverTheyShareVertices) {
  formats::Mesh mesh = Torus(10, 4, 40, 24);
  const SilhouetteResult whole = RunSilhouette(mesh);
  for (std::size_t f = 0; f < mesh.facets.size(); f += 3) {
    std::swap(mesh.facets[f].vertices[0], mesh.facets[f].vertices[1]);
  }
  EXPECT_TRUE(RunSilhouette(mesh).output == whole.output);
  EXPECT_TRUE(RunSilhouette(Soup(mesh)).output == whole.output);
}

// Facets with corners on a coarse grid lie on each other's edges and corners all the time.
formats::Mesh RandomFacets(unsigned seed, int count, int grid) {
  std::mt19937 random(seed);
  formats::Mesh mesh;
  for (int i = 0; i < 3 * count; ++i) {
    const auto coordinate = [&] {
      if (grid > 0) return static_cast<double>(random() % static_cast<unsigned>(grid));
      return static_cast<double>(random()) * 0x1p-32 * 10;
    };
    const double x = coordinate(), y = coordinate();
    mesh.vertices.push_back({x, y, coordinate()});
  }
  for (int i = 0; i < count; ++i) mesh.facets.push_back({{3 * i, 3 * i + 1, 3 * i + 2}, 1});
  return mesh;
}

bool IsOverAny(const formats::Mesh& mesh, const Point& p) {
  for (const formats::Facet& facet : mesh.facets) {
    int left = 0, right = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      const auto& a = mesh.vertices[static_cast<std::size_t>(facet.vertices[i])];
      const auto& b = mesh.vertices[static_cast<std::size_t>(facet.vertices[(i + 1) % 3])];
      const double side = (b[0] - a[0]) * (p.y - a[1]) - (b[1] - a[1]) * (p.x - a[0]);
      if (side > 0) ++left;
      if (side < 0) ++right;
    }
    if (left == 3 || right == 3) return true;
  }
  return false;
}

class RandomShadows : public testing::TestWithParam<int> {};

TEST_P(RandomShadows, WindOnceAroundWhatIsUnderAFacetAndNotAroundTheRest) {
  const int grid = GetParam();
  std::mt19937 random(7);
  for (unsigned seed = 0; seed < 40; ++seed) {
    const formats::Mesh mesh = RandomFacets(seed, 3 + static_cast<int>(seed), grid);
    const SilhouetteResult run = RunSilhouette(mesh);
    const double wide = grid > 0 ? grid : 10;
    for (int i = 0; i < 400; ++i) {
      const Point p{static_cast<double>(random()) * 0x1p-32 * wide,
                    static_cast<double>(random()) * 0x1p-32 * wide};
      if (DistanceTo(run.curves, p) < 1e-9) continue;
      EXPECT_EQ(Winding(run.curves, p), IsOverAny(mesh, p) ? 1 : 0)
          << seed << ' ' << p.x << ' ' << p.y;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Grids, RandomShadows, testing::Values(0, 4, 12));

TEST(Silhouette, MovedAndScaledMeshGivesTheMovedAndScaledCurves) {
  const formats::Mesh mesh = Torus(10, 4, 40, 24);
  const formats::Mesh tilted = Mapped(mesh, [](const auto& v) {
    return std::array<double, 3>{v[0], 0.8 * v[1] - 0.6 * v[2], 0.6 * v[1] + 0.8 * v[2]};
  });
  const SilhouetteResult here = RunSilhouette(tilted);
  for (const double factor : {1.0, 25.4, 1 / 25.4}) {
    const SilhouetteResult there = RunSilhouette(Moved(tilted, factor, {5000, -7000, 3000}));
    const double within = factor * 30 * 1e-9 + 16 * 7000 * 2.3e-16;
    Curves moved = here.curves;
    for (Curve& curve : moved.curves) {
      for (Point& point : curve) point = {factor * point.x + 5000, factor * point.y - 7000};
    }
    for (const Curve& curve : there.curves.curves) {
      for (const Point& point : curve) EXPECT_LE(DistanceTo(moved, point), within);
    }
    for (const Curve& curve : moved.curves) {
      for (const Point& point : curve) EXPECT_LE(DistanceTo(there.curves, point), within);
    }
    EXPECT_EQ(there.curves.curves.size(), here.curves.curves.size());
    EXPECT_NEAR(there.curves.heights[0], factor * here.curves.heights[0] + 3000, within);
  }
}

TEST(Silhouette, DistanceDropsPointsAndMovesTheCurveByNoMore) {
  const formats::Mesh mesh = Torus(10, 4, 400, 24);
  const SilhouetteResult exact = RunSilhouette(mesh);
  const SilhouetteResult coarse = RunSilhouette(mesh, 0.05);
  ASSERT_EQ(coarse.curves.curves.size(), 2U);
  EXPECT_LT(coarse.curves.heights.size(), 120U);
  for (const Curve& curve : exact.curves.curves) {
    for (const Point& point : curve) EXPECT_LE(DistanceTo(coarse.curves, point), 0.05);
  }
  for (const Curve& curve : coarse.curves.curves) {
    for (const Point& point : curve) EXPECT_LE(DistanceTo(exact.curves, point), 1e-12);
  }
}

TEST(Silhouette, DistanceLargerThanAHoleKeepsItAsATriangle) {
  const SilhouetteResult run = RunSilhouette(Torus(10, 4, 40, 24), 100);
  ASSERT_EQ(run.curves.curves.size(), 2U);
  EXPECT_GT(Area(run.curves.curves[0]), 0);
  EXPECT_LT(Area(run.curves.curves[1]), 0);
}

}  // namespace
}  // namespace outline_test
