// Spun outlines of known shape, and of random facets against a plain test of places.

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>

#include "OutlineRun.h"
#include "support/geometry/MeshChecks.h"

namespace outline_test {
namespace {

using support::Box;
using Place = std::array<double, 3>;

const Curve& OnlyCurve(const SpinResult& run) {
  EXPECT_EQ(run.channel.resets, 1);
  EXPECT_EQ(run.channel.closes, 1);
  EXPECT_EQ(run.curves.curves.size(), 1U);
  static const Curve none;
  return run.curves.curves.empty() ? none : run.curves.curves[0];
}

// From the z axis to the x axis.
formats::Mesh AlongX(const formats::Mesh& mesh) {
  return Mapped(mesh, [](const Place& v) { return Place{v[2], v[0], v[1]}; });
}

TEST(Spin, OfABoxAcrossTheAxisIsARectangleThatStandsOnTheAxis) {
  const SpinResult run = RunSpin(Box({1, -2, -3}, {11, 2, 3}, 1));
  ExpectSilent(run.dialog);
  const double r = std::sqrt(13);
  ExpectCurve(OnlyCurve(run), {{1, 0}, {11, 0}, {11, r}, {1, r}}, 1e-12);
  for (const double height : run.curves.heights) EXPECT_EQ(height, 0);
}

TEST(Spin, OfABoxBesideTheAxisBeginsAtTheNearestPlaceInsideItsFace) {
  const SpinResult run = RunSpin(Box({0, 5, -1}, {3, 7, 1}, 1));
  const double r = std::sqrt(50);
  ExpectCurve(OnlyCurve(run), {{0, 5}, {3, 5}, {3, r}, {0, r}}, 1e-12);
}

TEST(Spin, OfABoxTurnedInsideOutIsTheSame) {
  const SpinResult run = RunSpin(Reversed(Box({1, -2, -3}, {11, 2, 3}, 1)));
  EXPECT_NEAR(Area(OnlyCurve(run)), 10 * std::sqrt(13), 1e-11);
}

TEST(Spin, OfAnOpenBoxHasNoInside) {
  formats::Mesh mesh = Box({0, 5, -1}, {3, 7, 1}, 1);
  Add(mesh, Box({10, -2, -2}, {20, 2, 2}, 1));
  mesh.facets.pop_back();
  const SpinResult run = RunSpin(mesh);
  // The faces along the axis cover from 2 on; those across it are no area when they are spun.
  ASSERT_EQ(run.curves.curves.size(), 2U);
  ExpectCurve(run.curves.curves[1], {{10, 2}, {20, 2}, {20, std::sqrt(8)}, {10, std::sqrt(8)}},
              1e-12);
}

TEST(Spin, CavityAroundTheAxisIsLeftOut) {
  formats::Mesh mesh = Box({0, -4, -4}, {10, 4, 4}, 1);
  Add(mesh, Reversed(Box({2, -1, -1}, {8, 1, 1}, 1)));
  const double r = std::sqrt(32);
  ExpectCurve(OnlyCurve(RunSpin(mesh)),
              {{0, 0}, {2, 0}, {2, 1}, {8, 1}, {8, 0}, {10, 0}, {10, r}, {0, r}}, 1e-12);
}

TEST(Spin, CavityOffTheAxisIsAClockwiseHole) {
  formats::Mesh mesh = AlongX(Torus(10, 4, 64, 64));
  Add(mesh, Reversed(AlongX(Torus(10, 2, 64, 64))));
  const SpinResult run = RunSpin(mesh);
  ASSERT_EQ(run.curves.curves.size(), 2U);
  EXPECT_NEAR(Area(run.curves.curves[0]), 16 * std::numbers::pi, 0.2);
  EXPECT_NEAR(Area(run.curves.curves[1]), -4 * std::numbers::pi, 0.2);
}

// The ball passes through all places within 4 of one that is 10 away from the axis; its mesh lies
// inside it by the height of its facets at most.
TEST(Spin, OfABallOffTheAxisIsACircle) {
  const SpinResult run = RunSpin(Moved(Ball(4, 96), 1, {0, 10, 0}), 1e-3);
  const double depth = 2 * 4 * (1 - std::cos(std::numbers::pi / 96)) + 1e-3;
  for (const Point& point : OnlyCurve(run)) {
    const double from = std::hypot(point.x, point.y - 10);
    EXPECT_LE(from, 4 + 1e-3);
    EXPECT_GE(from, 4 - depth);
  }
  EXPECT_NEAR(Area(run.curves), 16 * std::numbers::pi, 0.2);
}

TEST(Spin, OfABallOnTheAxisIsAHalfDisc) {
  const SpinResult run = RunSpin(AlongX(Ball(10, 96)));
  EXPECT_NEAR(Area(OnlyCurve(run)), 50 * std::numbers::pi, 0.2);
}

TEST(Spin, OfATorusAroundTheAxisIsFilled) {
  const SpinResult run = RunSpin(AlongX(Torus(10, 4, 96, 96)));
  EXPECT_NEAR(Area(OnlyCurve(run)), 16 * std::numbers::pi, 0.2);
}

// The least and the greatest distance from the axis that a facet has at x, by its sides there and
// by the foot of the perpendicular; none when it does not come there.
bool RadiiAt(const std::array<Place, 3>& v, double x, double& least, double& most) {
  std::vector<std::array<double, 2>> ends;
  for (std::size_t i = 0; i < 3; ++i) {
    const Place &a = v[i], &b = v[(i + 1) % 3];
    if ((a[0] <= x) == (b[0] <= x)) continue;
    const double t = (x - a[0]) / (b[0] - a[0]);
    ends.push_back({a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])});
  }
  if (ends.size() != 2) return false;
  const double dy = ends[1][0] - ends[0][0], dz = ends[1][1] - ends[0][1];
  const double squared = dy * dy + dz * dz;
  double t = squared > 0 ? -(ends[0][0] * dy + ends[0][1] * dz) / squared : 0;
  t = std::clamp(t, 0.0, 1.0);
  least = std::hypot(ends[0][0] + t * dy, ends[0][1] + t * dz);
  most = std::max(std::hypot(ends[0][0], ends[0][1]), std::hypot(ends[1][0], ends[1][1]));
  return true;
}

bool IsCovered(const formats::Mesh& mesh, const Point& p, double margin = 0) {
  return std::any_of(mesh.facets.begin(), mesh.facets.end(), [&](const formats::Facet& facet) {
    std::array<Place, 3> corners;
    for (std::size_t i = 0; i < 3; ++i) {
      corners[i] = mesh.vertices[static_cast<std::size_t>(facet.vertices[i])];
    }
    double least = 0, most = 0;
    return RadiiAt(corners, p.x, least, most) && least - margin <= p.y && p.y <= most + margin;
  });
}

// Whether a place that is covered lies within about `distance`, however thin what covers it.
bool IsNearlyCovered(const formats::Mesh& mesh, const Point& p, double distance) {
  for (int i = -20; i <= 20; ++i) {
    if (IsCovered(mesh, {p.x + i * distance / 20, p.y}, distance)) return true;
  }
  return false;
}

// Whether a place that is not covered lies within about `distance`.
bool IsNearlyBare(const formats::Mesh& mesh, const Point& p, double distance) {
  if (p.y < distance) return true;
  for (int i = -20; i <= 20; ++i) {
    for (int j = -20; j <= 20; ++j) {
      if (!IsCovered(mesh, {p.x + i * distance / 20, p.y + j * distance / 20})) return true;
    }
  }
  return false;
}

// Places further than `distance` from the outline are covered just where it winds around them.
void ExpectCovers(const SpinResult& run, const formats::Mesh& mesh, double distance, int places) {
  std::mt19937 random(11);
  int looked = 0;
  for (int i = 0; i < places; ++i) {
    const Point p{static_cast<double>(random()) * 0x1p-32 * 12 - 1,
                  static_cast<double>(random()) * 0x1p-32 * 12};
    if (DistanceTo(run.curves, p) <= distance) continue;
    ++looked;
    EXPECT_EQ(Winding(run.curves, p), IsCovered(mesh, p) ? 1 : 0) << p.x << ' ' << p.y;
  }
  EXPECT_GT(looked, places / 2);
}

// The outline's points lie on the border: near each some places are covered, some are not.
// Where two arcs meet at a small angle their corner moves by more than either of them.
void ExpectOnBorder(const SpinResult& run, const formats::Mesh& mesh, double distance) {
  for (const Curve& curve : run.curves.curves) {
    for (const Point& p : curve) {
      EXPECT_TRUE(IsNearlyCovered(mesh, p, distance)) << p.x << ' ' << p.y;
      EXPECT_TRUE(IsNearlyBare(mesh, p, distance)) << p.x << ' ' << p.y;
    }
  }
}

TEST(Spin, OfAFacetThatIsNearestInsideItself) {
  formats::Mesh mesh;
  mesh.vertices = {{0, 5, -3}, {10, 5, -3}, {5, 5, 6}};
  mesh.facets = {{{0, 1, 2}, 1}};
  const SpinResult run = RunSpin(mesh, 1e-3);
  double least = 100, most = 0;
  for (const Point& point : OnlyCurve(run)) {
    least = std::min(least, point.y);
    most = std::max(most, point.y);
  }
  EXPECT_NEAR(least, 5, 1e-12);
  EXPECT_NEAR(most, std::sqrt(61), 1e-12);
  ExpectCovers(run, mesh, 1e-3, 20000);
}

TEST(Spin, OfAFacetThatCrossesTheAxisComesDownToIt) {
  formats::Mesh mesh;
  mesh.vertices = {{1, -2, -3}, {9, -3, 1}, {4, 6, 2}};
  mesh.facets = {{{0, 1, 2}, 1}};
  const SpinResult run = RunSpin(mesh, 1e-3);
  EXPECT_EQ(std::min_element(OnlyCurve(run).begin(), OnlyCurve(run).end(),
                             [](const Point& a, const Point& b) { return a.y < b.y; })
                ->y,
            0);
  ExpectCovers(run, mesh, 1e-3, 20000);
}

formats::Mesh RandomFacets(unsigned seed, int count, bool onGrid) {
  std::mt19937 random(seed);
  formats::Mesh mesh;
  for (int i = 0; i < 3 * count; ++i) {
    const auto coordinate = [&](double low, double wide) {
      const double share = static_cast<double>(random()) * 0x1p-32;
      return low + (onGrid ? std::floor(share * wide) : share * wide);
    };
    const double x = coordinate(0, 10), y = coordinate(-7, 14);
    mesh.vertices.push_back({x, y, coordinate(-7, 14)});
  }
  for (int i = 0; i < count; ++i) mesh.facets.push_back({{3 * i, 3 * i + 1, 3 * i + 2}, 1});
  return mesh;
}

class RandomSpin : public testing::TestWithParam<bool> {};

TEST_P(RandomSpin, WindsOnceAroundWhatIsCoveredAndNotAroundTheRest) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    const formats::Mesh mesh = RandomFacets(seed, 1 + static_cast<int>(seed % 6), GetParam());
    const SpinResult run = RunSpin(mesh, 0.01);
    if (run.curves.curves.empty()) continue;
    ExpectCovers(run, mesh, 0.01, 600);
    ExpectOnBorder(run, mesh, 0.04);
  }
}

INSTANTIATE_TEST_SUITE_P(OnAndOffAGrid, RandomSpin, testing::Bool());

// How far the two outlines are from each other at their points.
double Apart(const Curves& a, const Curves& b) {
  double most = 0;
  for (const Curve& curve : a.curves) {
    for (const Point& point : curve) most = std::max(most, DistanceTo(b, point));
  }
  for (const Curve& curve : b.curves) {
    for (const Point& point : curve) most = std::max(most, DistanceTo(a, point));
  }
  return most;
}

TEST(Spin, CurvedPiecesStayWithinTheDistance) {
  for (unsigned seed = 0; seed < 8; ++seed) {
    const formats::Mesh mesh = RandomFacets(seed, 1, false);
    const SpinResult fine = RunSpin(mesh, 1e-6);
    for (const double distance : {0.3, 0.03, 0.003}) {
      const SpinResult run = RunSpin(mesh, distance);
      EXPECT_LE(Apart(run.curves, fine.curves), distance + 1e-6) << seed;
      EXPECT_LT(run.channel.points.size(), fine.channel.points.size());
    }
  }
}

// Two facets with a side each along which r^2 = 9 + 400 (x - a)^2, a = 0 for one and 0.3 for the
// other: above both is a narrow notch, whose tip lies where they cross. Straight pieces move the
// tip by far more than they are away from their curves.
TEST(Spin, TipOfANotchBetweenCurvedPiecesStaysWithinTheDistance) {
  formats::Mesh mesh;
  mesh.vertices = {{0, 3, 0}, {0.4, 3, 8}, {0.4, 1, 0}, {0.3, 3, 0}, {-0.1, 3, 8}, {-0.1, 1, 0}};
  mesh.facets = {{{0, 1, 2}, 1}, {{3, 4, 5}, 1}};
  const Point tip{0.15, std::sqrt(18)};
  for (const double distance : {0.1, 0.03, 0.01, 0.003, 0.001, 0.0003}) {
    EXPECT_LE(DistanceTo(RunSpin(mesh, distance).curves, tip), distance);
  }
}

TEST(Spin, CornersOfCurvedPiecesStayWithinTheDistance) {
  int further = 0;
  for (unsigned seed = 0; seed < 50; ++seed) {
    const formats::Mesh mesh = RandomFacets(seed, 2 + static_cast<int>(seed % 4), false);
    const SpinResult fine = RunSpin(mesh, 1e-4);
    if (Apart(RunSpin(mesh, 0.03).curves, fine.curves) > 0.03 + 1e-4) ++further;
  }
  // But for those of notches as narrow as a few degrees.
  EXPECT_LE(further, 1);
}

TEST(Spin, MovedAlongTheAxisAndScaledMeshGivesTheMovedAndScaledCurves) {
  const formats::Mesh mesh = Moved(Torus(3, 1, 40, 24), 1, {0, 5, 2});
  const SpinResult here = RunSpin(mesh, 0.01);
  for (const double factor : {1.0, 25.4, 1 / 25.4}) {
    const SpinResult there = RunSpin(Moved(mesh, factor, {5000, 0, 0}), 0.01 * factor);
    ASSERT_EQ(there.curves.curves.size(), here.curves.curves.size());
    Curves moved = here.curves;
    for (Curve& curve : moved.curves) {
      for (Point& point : curve) point = {factor * point.x + 5000, factor * point.y};
    }
    const double within = factor * (10e-9 + 0.01) + 16 * 5000 * 2.3e-16;
    for (const Curve& curve : there.curves.curves) {
      for (const Point& point : curve) EXPECT_LE(DistanceTo(moved, point), within);
    }
    for (const Curve& curve : moved.curves) {
      for (const Point& point : curve) EXPECT_LE(DistanceTo(there.curves, point), within);
    }
  }
}

}  // namespace
}  // namespace outline_test
