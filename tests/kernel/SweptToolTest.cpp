#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>
#include <utility>
#include <variant>

#include "kernel/sweep/SweptTool.h"
#include "support/geometry/PlainTool.h"

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const Vec3 kUp{0, 0, 1};

ConvexTool Tool(const formats::ConvexTool& parameters) {
  return std::get<ConvexTool>(ConvexTool::Make(parameters));
}

const ConvexTool& Ball() {
  static const ConvexTool tool = Tool({5, 0, 0, 90, 0, 0});
  return tool;
}

const ConvexTool& Flat() {
  static const ConvexTool tool = Tool({0, 6, 0, 90, 0, 0});
  return tool;
}

const ConvexTool& Bull() {
  static const ConvexTool tool = Tool({1, 4, 0, 90, 0, 0});
  return tool;
}

void ExpectInterval(const SweptTool& swept, int axis, const Vec3& origin, double enter,
                    double leave) {
  RayInterval interval;
  ASSERT_TRUE(swept.Intersect(axis, origin, interval));
  for (const auto& [actual, expected] :
       {std::pair{interval.enter, enter}, std::pair{interval.leave, leave}}) {
    if (std::isinf(expected)) {
      EXPECT_EQ(actual, expected);
    } else {
      EXPECT_NEAR(actual, expected, 2e-14 * std::max(1.0, std::abs(expected)));
    }
  }
}

void ExpectMiss(const SweptTool& swept, int axis, const Vec3& origin) {
  RayInterval interval;
  EXPECT_FALSE(swept.Intersect(axis, origin, interval));
}

TEST(SweptBall, StandingIsASphereUnderACylinder) {
  const SweptTool ball(Ball(), kUp, {10, 20, 30}, {10, 20, 30});
  ExpectInterval(ball, 2, {13, 20, 0}, 31, kInfinity);
  ExpectInterval(ball, 0, {0, 23, 35}, 6, 14);
  ExpectInterval(ball, 1, {13, 0, 35}, 16, 24);
  ExpectInterval(ball, 1, {13, 0, 500}, 16, 24);
  ExpectInterval(ball, 1, {10, 0, 31}, 17, 23);
}

TEST(SweptBall, LevelMoveIsACylinderBetweenTwoSpheres) {
  const SweptTool ball(Ball(), kUp, {0, 0, 0}, {10, 0, 0});
  ExpectInterval(ball, 2, {5, 4, 0}, 2, kInfinity);
  ExpectInterval(ball, 2, {13, 0, 0}, 1, kInfinity);
  ExpectInterval(ball, 0, {0, 3, 5}, -4, 14);
  ExpectInterval(ball, 1, {5, 0, 1}, -3, 3);
}

TEST(SweptBall, RampIsASlantedCylinderBelow) {
  const SweptTool ball(Ball(), kUp, {0, 0, 0}, {10, 0, 10});
  // The centre line is z = 5 + x; the surface below it is 5 away, 5 sqrt 2 straight down.
  ExpectInterval(ball, 2, {7, 0, 0}, 12 - 5 * std::numbers::sqrt2, kInfinity);
  // Before the first tangent point the standing ball is lower.
  ExpectInterval(ball, 2, {3, 0, 0}, 1, kInfinity);
  // At z = 12 the shank of the first place behind, the last ball, 3 below its centre, ahead.
  ExpectInterval(ball, 0, {0, 0, 12}, -5, 14);
  // At z = 7 the slanted cylinder ahead.
  ExpectInterval(ball, 0, {0, 0, 7}, -5, 2 + 5 * std::numbers::sqrt2);
}

TEST(SweptBall, ReversedMoveIsTheSameBody) {
  const Vec3 a{1, 2, 3};
  const Vec3 b{7, -4, 5};
  const SweptTool there(Ball(), kUp, a, b);
  const SweptTool back(Ball(), kUp, b, a);
  for (int axis = 0; axis < 3; ++axis) {
    RayInterval first;
    RayInterval second;
    ASSERT_TRUE(there.Intersect(axis, {4, -1, 9}, first));
    ASSERT_TRUE(back.Intersect(axis, {4, -1, 9}, second));
    EXPECT_NEAR(first.enter, second.enter, 1e-13);
    if (axis < 2) {
      EXPECT_NEAR(first.leave, second.leave, 1e-13);
    }
  }
}

TEST(SweptFlat, SlotHasExactlyPlaneFloorAndWalls) {
  const SweptTool slot(Flat(), kUp, {10, 50, 30}, {90, 50, 30});
  for (int step = 0; step <= 200; ++step) {
    const double x = 10 + 0.4 * step;
    RayInterval interval;
    ASSERT_TRUE(slot.Intersect(2, {x, 52.3, 0}, interval));
    EXPECT_EQ(interval.enter, 30);
    ASSERT_TRUE(slot.Intersect(1, {x, 0, 40}, interval));
    EXPECT_EQ(interval.enter, 44);
    EXPECT_EQ(interval.leave, 56);
  }
  ExpectInterval(slot, 0, {0, 50, 31}, 4, 96);
}

TEST(SweptFlat, TouchingIsNoHit) {
  const SweptTool slot(Flat(), kUp, {10, 50, 30}, {90, 50, 30});
  ExpectMiss(slot, 0, {0, 50, 30});
  ExpectMiss(slot, 1, {50, 0, 30});
  ExpectMiss(slot, 0, {0, 44, 35});
  ExpectMiss(slot, 2, {50, 56, 0});
  ExpectMiss(slot, 1, {4, 0, 35});
  const SweptTool standing(Flat(), kUp, {10, 50, 30}, {10, 50, 30});
  ExpectMiss(standing, 2, {16, 50, 0});
  ExpectMiss(standing, 0, {0, 56, 40});
  ExpectMiss(standing, 0, {0, 50, 30});
}

TEST(SweptFlat, DiagonalSlotHasExactlyPlaneWalls) {
  // Along (3, 4) / 5: the walls are 6 away across it, a ray along x meets them 6 / 0.8 either side.
  const SweptTool slot(Flat(), kUp, {0, 0, 0}, {30, 40, 0});
  ExpectInterval(slot, 0, {0, 20, 5}, 15 - 7.5, 15 + 7.5);
  ExpectInterval(slot, 1, {15, 0, 5}, 20 - 10, 20 + 10);
}

TEST(SweptFlat, RampFloorIsTheLowerDiscsAndTheEllipticEdge) {
  const SweptTool ramp(Flat(), kUp, {0, 0, 0}, {10, 0, 10});
  ExpectInterval(ramp, 2, {5, 0, 0}, 0, kInfinity);
  ExpectInterval(ramp, 2, {10, 0, 0}, 4, kInfinity);
  // Off the centre line the disc's edge is sqrt(36 - 3.6^2) = 4.8 ahead.
  ExpectInterval(ramp, 2, {10, 3.6, 0}, 10 - 4.8, kInfinity);
  // At z = 5 the disc has come as far as x = 5.
  ExpectInterval(ramp, 0, {0, 0, 5}, -6, 11);
  ExpectInterval(ramp, 1, {8, 0, 5}, -std::sqrt(27.0), std::sqrt(27.0));
}

TEST(SweptFlat, PlungeIsACylinderFromTheLowerEndOn) {
  for (const bool downwards : {false, true}) {
    const Vec3 high{1, 2, 9};
    const Vec3 low{1, 2, -4};
    const SweptTool plunge(Flat(), kUp, downwards ? high : low, downwards ? low : high);
    ExpectInterval(plunge, 2, {4, 2, 0}, -4, kInfinity);
    ExpectInterval(plunge, 0, {0, 2, -3}, -5, 7);
    ExpectMiss(plunge, 0, {0, 2, -4});
    ExpectMiss(plunge, 2, {7, 2, 0});
  }
}

TEST(SweptTool, DriftInTheLastDigitChangesNothing) {
  // What a post-processor's rounding leaves of a straight plunge, row or level.
  const double drift = 1e-15;
  for (const ConvexTool* tool : {&Ball(), &Flat(), &Bull()}) {
    const double widest = tool->WidestRadius();
    const SweptTool plunge(*tool, kUp, {0, 0, 10}, {drift, -drift, 0});
    ExpectInterval(plunge, 2, {3, 1, 0}, tool->HeightAt(std::sqrt(10.0)), kInfinity);
    ExpectInterval(plunge, 0, {0, 0, 8}, -widest, widest);
    const SweptTool row(*tool, kUp, {0, 0, 0}, {20, drift, -drift});
    ExpectInterval(row, 1, {10, 0, 8}, -widest, widest);
    ExpectInterval(row, 0, {0, 3, 8}, -std::sqrt(widest * widest - 9),
                   20 + std::sqrt(widest * widest - 9));
    RayInterval interval;
    ASSERT_TRUE(row.Intersect(2, {7, 3, 0}, interval));
    EXPECT_NEAR(interval.enter, tool->HeightAt(3), 2e-15);
    const SweptTool standing(*tool, kUp, {0, 0, 0}, {drift * 1e-3, drift * 1e-3, 0});
    ExpectInterval(standing, 2, {3, 1, 0}, tool->HeightAt(std::sqrt(10.0)), kInfinity);
    ExpectInterval(standing, 0, {0, 3, 8}, -std::sqrt(widest * widest - 9),
                   std::sqrt(widest * widest - 9));
  }
}

TEST(SweptBull, LevelMoveHasFloorQuarterRoundsAndWalls) {
  const SweptTool bull(Bull(), kUp, {0, 0, 0}, {20, 0, 0});
  ExpectInterval(bull, 2, {10, 3.9, 0}, 0, kInfinity);
  ExpectInterval(bull, 2, {10, 4.6, 0}, 0.2, kInfinity);
  ExpectInterval(bull, 1, {10, 0, 0.4}, -4.8, 4.8);
  ExpectInterval(bull, 1, {10, 0, 7}, -5, 5);
  ExpectInterval(bull, 0, {0, 0, 0.4}, -4.8, 24.8);
}

TEST(SweptBull, RampInTheMiddlePlaneIsALineUnderTheCorner) {
  // In the plane y = 0 the front corner is a circle of radius 1 about (s + 4, s + 1).
  const SweptTool bull(Bull(), kUp, {0, 0, 0}, {20, 0, 20});
  ExpectInterval(bull, 2, {12, 0, 0}, 12 - 4 + 1 - std::numbers::sqrt2, kInfinity);
  RayInterval interval;
  ASSERT_TRUE(bull.Intersect(0, {0, 0, 10}, interval));
  EXPECT_NEAR(interval.leave, 10 + 3 + std::numbers::sqrt2, 1e-13);
  EXPECT_DOUBLE_EQ(interval.enter, -5);
}

TEST(SweptPoint, ConeOnALevelMoveIsAVGroove) {
  const ConvexTool point = Tool({0, 0, 45, 90, 0, 0});
  const SweptTool groove(point, kUp, {0, 0, 0}, {10, 0, 0});
  ExpectInterval(groove, 2, {5, 3, 0}, 3, kInfinity);
  ExpectInterval(groove, 1, {5, 0, 2}, -2, 2);
  ExpectInterval(groove, 0, {0, 3, 5}, -4, 14);
}

TEST(SweptPoint, ConeOnARampIsTangentToItsPlanes) {
  const ConvexTool point = Tool({0, 0, 45, 90, 0, 0});
  const SweptTool ramp(point, kUp, {0, 0, 0}, {100, 0, 50});
  ExpectInterval(ramp, 2, {50, 3, 0}, 25 + 3 * std::sqrt(0.75), kInfinity);
  ExpectInterval(ramp, 1, {50, 0, 25 + std::sqrt(0.75)}, -1, 1);
  // Beyond the end the standing cone is left; above it nothing is bounded.
  ExpectInterval(ramp, 2, {104, 0, 0}, 54, kInfinity);
}

TEST(SweptTool, DownwardAxisOpensDownwards) {
  const SweptTool ball(Ball(), {0, 0, -1}, {0, 0, 0}, {10, 0, 0});
  ExpectInterval(ball, 2, {5, 4, 0}, -kInfinity, -2);
  ExpectInterval(ball, 0, {0, 3, -5}, -4, 14);
}

TEST(SweptTool, AxisAlongXCutsFromTheSide) {
  const SweptTool flat(Flat(), {1, 0, 0}, {3, 0, 0}, {3, 20, 0});
  ExpectInterval(flat, 0, {0, 10, 5}, 3, kInfinity);
  ExpectInterval(flat, 2, {4, 10, 0}, -6, 6);
  ExpectInterval(flat, 1, {4, 0, 0}, -6, 26);
  ExpectMiss(flat, 1, {3, 0, 0});
}

TEST(SweptTool, TiltedBallIsStillRound) {
  const Vec3 axis{0.6, 0, 0.8};
  const SweptTool ball(Ball(), axis, {-3, 0, -4}, {-3, 10, -4});
  // The centre runs along y through (0, 0, 0).
  RayInterval interval;
  ASSERT_TRUE(ball.Intersect(2, {-3, 5, 0}, interval));
  EXPECT_NEAR(interval.enter, -4, 1e-13);
  ASSERT_TRUE(ball.Intersect(1, {-3, 0, -2.4}, interval));
  const double half = std::sqrt(25 - 9 - 2.4 * 2.4);
  EXPECT_NEAR(interval.enter, -half, 1e-13);
  EXPECT_NEAR(interval.leave, 10 + half, 1e-13);
}

TEST(SweptTool, TiltedFlatFloorIsAPlane) {
  const Vec3 axis{0.6, 0, 0.8};
  const SweptTool flat(Flat(), axis, {0, 0, 0}, {0, 30, 0});
  // The floor is the plane 0.6 x + 0.8 z = 0, as wide as 6 * 0.8 either side along x.
  for (int step = -9; step <= 9; ++step) {
    const double x = 0.5 * step;
    RayInterval interval;
    ASSERT_TRUE(flat.Intersect(2, {x, 15, 0}, interval));
    EXPECT_NEAR(interval.enter, -0.75 * x, 1e-14);
  }
  RayInterval interval;
  ASSERT_TRUE(flat.Intersect(0, {0, 15, 4}, interval));
  // The wall's normals are +-(0.8, 0, -0.6), 6 away.
  EXPECT_NEAR(interval.enter, (-6 + 0.6 * 4) / 0.8, 1e-13);
  EXPECT_NEAR(interval.leave, (6 + 0.6 * 4) / 0.8, 1e-13);
}

TEST(SweptTool, NormalsPointOutOfTheSurfaceThatWasCut) {
  const SweptTool slot(Flat(), kUp, {0, 0, 0}, {30, 0, 0});
  EXPECT_EQ(slot.Normal({15, 2, 0}), (Vec3{0, 0, -1}));
  EXPECT_NEAR(Length(slot.Normal({15, 6, 3}) - Vec3{0, 1, 0}), 0, 1e-15);
  const SweptTool groove(Ball(), kUp, {0, 0, 0}, {30, 0, 0});
  EXPECT_NEAR(Length(groove.Normal({15, 3, 1}) - Vec3{0, 0.6, -0.8}), 0, 1e-15);
}

TEST(SweptTool, ProjectMovesAPointOntoTheSurface) {
  const SweptTool groove(Ball(), kUp, {0, 0, 0}, {30, 0, 0});
  EXPECT_NEAR(Length(groove.Project({15, 3.06, 0.92}) - Vec3{15, 3, 1}), 0, 1e-14);
  EXPECT_NEAR(Length(groove.Project({15, 2.94, 1.08}) - Vec3{15, 3, 1}), 0, 1e-14);
}

TEST(SweptTool, BoundsFollowTheOutlineInsideTheClip) {
  const SweptTool ball(Ball(), kUp, {10, 0, 40}, {20, 0, 42});
  const Box3 bounds = ball.BoundsWithin({{0, -100, 0}, {100, 100, 41}});
  EXPECT_EQ(bounds.low, (Vec3{7, -3, 40}));
  EXPECT_EQ(bounds.high, (Vec3{23, 3, 41}));
  EXPECT_TRUE(ball.BoundsWithin({{0, -100, 0}, {100, 100, 39}}).IsEmpty());
  EXPECT_TRUE(ball.BoundsWithin({{60, -100, 0}, {100, 100, 90}}).IsEmpty());
}

// Random bodies against the plainly computed ones.
class Chance {
 public:
  double Between(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine() >> 11) * 0x1p-53);
  }
  int Below(int count) { return static_cast<int>(m_engine() % static_cast<unsigned>(count)); }
  Vec3 Point(double size) {
    return {Between(-size, size), Between(-size, size), Between(-size, size)};
  }

  Vec3 Axis() {
    if (Below(2) == 0) return Normalised(Point(1));
    Vec3 axis{};
    axis[Below(3)] = Below(2) == 0 ? 1 : -1;
    return axis;
  }

  // Skew, square to the axis, along the axis, none, along one coordinate.
  Vec3 Move(const Vec3& axis) {
    const Vec3 move = Point(8);
    switch (Below(5)) {
      case 0:
        return move;
      case 1:
        return std::abs(axis.x + axis.y + axis.z) == 1 && LengthSquared(axis) == 1
                   ? Vec3{move.x * (1 - std::abs(axis.x)), move.y * (1 - std::abs(axis.y)),
                          move.z * (1 - std::abs(axis.z))}
                   : move - Dot(move, axis) * axis;
      case 2:
        return move.x * axis;
      case 3:
        return {};
      default: {
        Vec3 along{};
        const int k = Below(3);
        along[k] = move[k];
        return along;
      }
    }
  }

  formats::ConvexTool Tool() {
    for (;;) {
      formats::ConvexTool tool;
      tool.cornerRadius = Below(3) == 0 ? 0 : Between(0.2, 3);
      tool.flatRadius = Below(3) == 0 ? 0 : Between(0.2, 4);
      tool.lowerTaperAngle = Below(2) == 0 ? 90 : Between(20, 89);
      tool.upperTaperAngle = Below(2) == 0 ? 0 : Between(1, 60);
      tool.taperHeight = Below(2) == 0 ? 0 : Between(1, 10);
      tool.upperBevelRadius = Below(2) == 0 ? 0 : Between(0.1, 3);
      if (std::holds_alternative<ConvexTool>(ConvexTool::Make(tool))) return tool;
    }
  }

 private:
  std::mt19937_64 m_engine{20011};
};

support::Point Plain(const Vec3& p) { return {p.x, p.y, p.z}; }

class RandomBodies : public ::testing::Test {
 protected:
  // Calls check(swept, excess) for every body; excess(point) is above 0 outside.
  template <typename Check>
  void ForEach(int count, Check&& check) {
    for (int i = 0; i < count; ++i) {
      const formats::ConvexTool parameters = chance.Tool();
      const ConvexTool tool = Tool(parameters);
      const support::PlainTool plain(parameters);
      const Vec3 axis = chance.Axis();
      const Vec3 from = chance.Point(5);
      const Vec3 to = from + chance.Move(axis);
      const SweptTool swept(tool, axis, from, to);
      SCOPED_TRACE(testing::Message()
                   << "tool " << parameters.cornerRadius << ' ' << parameters.flatRadius << ' '
                   << parameters.upperTaperAngle << ' ' << parameters.lowerTaperAngle << ' '
                   << parameters.taperHeight << ' ' << parameters.upperBevelRadius << " axis "
                   << axis.x << ' ' << axis.y << ' ' << axis.z << " move " << to.x - from.x << ' '
                   << to.y - from.y << ' ' << to.z - from.z);
      check(swept, [&](const Vec3& point) {
        return plain.SweptExcess(Plain(axis), Plain(from), Plain(to), Plain(point));
      });
      if (HasFailure()) return;
    }
  }

  Chance chance;
};

Vec3 OnRay(Vec3 origin, int axis, double place) {
  origin[axis] = place;
  return origin;
}

TEST_F(RandomBodies, RaysEnterAndLeaveOnTheSurface) {
  int hits = 0;
  ForEach(3000, [&](const SweptTool& swept, auto&& excess) {
    const Vec3 origin = chance.Point(12);
    const int axis = chance.Below(3);
    RayInterval interval;
    if (!swept.Intersect(axis, origin, interval)) return;
    ++hits;
    ASSERT_LT(interval.enter, interval.leave);
    for (const double end : {interval.enter, interval.leave}) {
      if (std::abs(end) > 1000) continue;
      const double outside = end == interval.enter ? end - 1e-4 : end + 1e-4;
      EXPECT_GT(excess(OnRay(origin, axis, outside)), 0);
      EXPECT_NEAR(excess(OnRay(origin, axis, end)), 0, 1e-10);
      EXPECT_NEAR(swept.SignedDistance(OnRay(origin, axis, end)), 0, 1e-11);
    }
    const double low = std::max(interval.enter, -1000.0);
    const double high = std::min(interval.leave, 1000.0);
    for (int k = 1; k < 8; ++k) {
      EXPECT_LT(excess(OnRay(origin, axis, low + (high - low) * k / 8)), 1e-10);
    }
  });
  EXPECT_GT(hits, 500);
}

TEST_F(RandomBodies, RaysThatMissHaveNoPointInside) {
  int misses = 0;
  ForEach(1500, [&](const SweptTool& swept, auto&& excess) {
    const Vec3 origin = chance.Point(12);
    const int axis = chance.Below(3);
    RayInterval interval;
    if (swept.Intersect(axis, origin, interval)) return;
    ++misses;
    for (int step = -50; step <= 50; ++step) {
      EXPECT_GT(excess(OnRay(origin, axis, 0.8 * step)), -1e-10);
    }
  });
  EXPECT_GT(misses, 300);
}

TEST_F(RandomBodies, DistanceHasTheSignOfThePlainBodyAndProjectLandsOnIt) {
  ForEach(3000, [&](const SweptTool& swept, auto&& excess) {
    const Vec3 point = chance.Point(12);
    const double distance = swept.SignedDistance(point);
    const double plain = excess(point);
    if (std::abs(plain) > 1e-10) {
      EXPECT_EQ(distance > 0, plain > 0);
    }
    EXPECT_NEAR(Length(swept.Normal(point)), 1, 1e-13);
    if (distance > 0) {
      EXPECT_NEAR(excess(swept.Project(point)), 0, 1e-9);
      EXPECT_GE(distance, plain - 1e-10);
    }
  });
}

TEST_F(RandomBodies, NormalPointsAwayFromTheWholeBody) {
  ForEach(400, [&](const SweptTool& swept, auto&& excess) {
    const Vec3 outside = chance.Point(12);
    if (swept.SignedDistance(outside) <= 1e-3) return;
    const Vec3 foot = swept.Project(outside);
    const Vec3 normal = swept.Normal(outside);
    for (int k = 0; k < 20; ++k) {
      const Vec3 other = chance.Point(12);
      if (excess(other) < 0) {
        EXPECT_LT(Dot(other - foot, normal), 1e-9);
      }
    }
  });
}

TEST_F(RandomBodies, BoundsHoldEveryHitInsideTheClip) {
  const Box3 clip{{-9, -9, -9}, {9, 9, 9}};
  ForEach(3000, [&](const SweptTool& swept, auto&&) {
    const Vec3 origin = chance.Point(9);
    const int axis = chance.Below(3);
    const Box3 bounds = swept.BoundsWithin(clip);
    RayInterval interval;
    if (!swept.Intersect(axis, origin, interval)) return;
    const double low = std::max(interval.enter, -9.0);
    const double high = std::min(interval.leave, 9.0);
    if (low > high) return;
    EXPECT_TRUE(bounds.Grown(1e-9).Contains(OnRay(origin, axis, low)));
    EXPECT_TRUE(bounds.Grown(1e-9).Contains(OnRay(origin, axis, high)));
  });
}

}  // namespace
}  // namespace kernel
