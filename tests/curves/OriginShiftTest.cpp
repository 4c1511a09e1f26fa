// Whether geometry is moved for a run, where to, and how box and distance follow.

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "curves/OriginShift.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Triple = std::array<double, 3>;

class OriginShiftTest : public ::testing::Test {
 protected:
  Triple Centre(const Triple& boxMin, const Triple& boxMax) {
    Triple c{};
    ShiftCentre(boxMin.data(), boxMax.data(), c.data());
    return c;
  }

  struct Scale {
    bool chosen;
    double factor;
    bool operator==(const Scale&) const = default;
  };
  Scale Chosen(double distance, const Triple& extent) {
    const Triple boxMin = {-7, 11, 100};
    const Triple boxMax = {extent[0] - 7, extent[1] + 11, extent[2] + 100};
    Scale scale{false, -1};
    scale.chosen = ChooseScale(distance, boxMin.data(), boxMax.data(), &scale.factor);
    return scale;
  }

  bool IsFar(const Triple& c) { return IsFarFromOrigin(c.data()); }

  support::TestHost host;
};

const Triple kSmall = {1, 1, 1};

TEST_F(OriginShiftTest, CentreLiesOffTheMiddleInXAndLessInY) {
  host.metric = false;
  EXPECT_THAT(Centre({0, 0, 0}, {10, 10, 10}), ElementsAre(5.2, 5.04, 5));
  EXPECT_THAT(Centre({30, 0, 0}, {40, 1, 1}), ElementsAre(35.2, 0.54, 0.5));
  host.metric = true;
  EXPECT_THAT(Centre({30, 0, 0}, {40, 1, 1}), ElementsAre(35.5, 0.6, 0.5));
  EXPECT_THAT(host.events.Events(), ElementsAre("IsMetric", "IsMetric", "IsMetric"));
}

TEST_F(OriginShiftTest, OrdinaryDistanceAndBoxAreNotScaled) {
  EXPECT_EQ(Chosen(0.01, {10, 10, 10}), (Scale{false, 1.0}));
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(OriginShiftTest, SmallDistanceIsScaledToHalfOfItAtFiveHundredThousandths) {
  EXPECT_EQ(Chosen(0.00002, kSmall), (Scale{true, 5e-5 / 0.00001}));
  EXPECT_EQ(Chosen(9.9e-5, kSmall), (Scale{true, 5e-5 / 4.95e-5}));
}

TEST_F(OriginShiftTest, HalfDistanceOfFiveHundredThousandthsNeedsNoScaling) {
  EXPECT_EQ(Chosen(1e-4, kSmall), (Scale{false, 1.0}));
  // Nor does one of exactly the bound, a little below it.
  EXPECT_EQ(Chosen(2 * 4.9999999e-5, kSmall), (Scale{false, 1.0}));
  const double below = std::nextafter(2 * 4.9999999e-5, 0);
  EXPECT_EQ(Chosen(below, kSmall), (Scale{true, 5e-5 / (below * 0.5)}));
}

TEST_F(OriginShiftTest, DistanceOfNoLengthIsNeverScaled) {
  for (const double distance : {0.0, -0.0, 2e-12, 1e-300, -1e-5, -1.0}) {
    EXPECT_EQ(Chosen(distance, kSmall), (Scale{false, 1.0})) << distance;
    EXPECT_EQ(Chosen(distance, {5000, 1, 1}), (Scale{false, 1.0})) << distance;
  }
  const double above = std::nextafter(2e-12, 1);
  EXPECT_EQ(Chosen(above, kSmall), (Scale{true, 5e-5 / (above * 0.5)}));
}

TEST_F(OriginShiftTest, LargeBoxIsScaledByItsLargestExtent) {
  EXPECT_EQ(Chosen(1.0, {5000, 1, 1}), (Scale{true, 3900.0 / 5000.0}));
  EXPECT_EQ(Chosen(1.0, {4000, 8000, 5000}), (Scale{true, 3900.0 / 8000.0}));
  EXPECT_EQ(Chosen(1.0, {1, 1, 3951}), (Scale{true, 3900.0 / 3951.0}));
}

TEST_F(OriginShiftTest, BoxOfExactlyTheLargestExtentIsNotScaled) {
  EXPECT_EQ(Chosen(1.0, {3950, 3950, 3950}), (Scale{false, 1.0}));
}

TEST_F(OriginShiftTest, LargeBoxIsNotScaledWhenTheDistanceWouldBecomeTooSmall) {
  EXPECT_EQ(Chosen(1e-4, {5000, 1, 1}), (Scale{false, 1.0}));
  // 0.78 times half the distance: once at the bound, once below it.
  EXPECT_EQ(Chosen(1.2821e-4, {5000, 1, 1}), (Scale{true, 0.78}));
  EXPECT_EQ(Chosen(1.2820e-4, {5000, 1, 1}), (Scale{false, 1.0}));
}

TEST_F(OriginShiftTest, SmallDistanceWinsOverALargeBox) {
  EXPECT_EQ(Chosen(0.00002, {5000, 1, 1}), (Scale{true, 5e-5 / 0.00001}));
}

TEST_F(OriginShiftTest, NumbersThatAreNoneAreNotScaled) {
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Chosen(1.0, {kNoNumber, kNoNumber, kNoNumber}), (Scale{false, 1.0}));
  EXPECT_EQ(Chosen(1.0, {kNoNumber, 5000, 1}), (Scale{true, 0.78}));
  EXPECT_EQ(Chosen(kNoNumber, kSmall), (Scale{false, 1.0}));
}

TEST_F(OriginShiftTest, CentreIsFarBeyondFiveHundredMillimetresOrTwentyInches) {
  for (const bool metric : {true, false}) {
    host.metric = metric;
    const double reach = metric ? 500.0 : 20.0;
    const double beyond = std::nextafter(reach, 1e9);
    EXPECT_FALSE(IsFar({reach, -reach, reach}));
    for (std::size_t axis = 0; axis < 3; ++axis) {
      for (const double sign : {1.0, -1.0}) {
        Triple c = {0, 0, 0};
        c[axis] = sign * beyond;
        EXPECT_TRUE(IsFar(c)) << axis;
      }
    }
  }
}

TEST_F(OriginShiftTest, HostIsAskedItsUnitForEachCoordinateUntilOneIsFar) {
  IsFar({0, 0, 0});
  EXPECT_THAT(host.events.Events(), ElementsAre("IsMetric", "IsMetric", "IsMetric"));
  host.events.Clear();
  IsFar({0, 1000, 0});
  EXPECT_THAT(host.events.Events(), ElementsAre("IsMetric", "IsMetric"));
  host.events.Clear();
  IsFar({1000, 0, 0});
  EXPECT_THAT(host.events.Events(), ElementsAre("IsMetric"));
}

TEST_F(OriginShiftTest, CentreThatIsNoNumberIsFar) {
  EXPECT_TRUE(IsFar({0, 0, std::numeric_limits<double>::quiet_NaN()}));
}

TEST_F(OriginShiftTest, BoxIsMovedAndTheDistanceStaysWithoutAScale) {
  Triple boxMin = {30, 0, -1};
  Triple boxMax = {40, 1, 1};
  double distance = 0.25;
  const Triple c = {35.25, 0.5, 0.125};
  // A factor that does not hold: it must not be looked at.
  ApplyShift(c.data(), false, 7.0, boxMin.data(), boxMax.data(), &distance);
  EXPECT_THAT(boxMin, ElementsAre(-5.25, -0.5, -1.125));
  EXPECT_THAT(boxMax, ElementsAre(4.75, 0.5, 0.875));
  EXPECT_EQ(distance, 0.25);
  RestoreShift(false, 7.0, c.data(), &distance, boxMin.data(), boxMax.data());
  EXPECT_THAT(boxMin, ElementsAre(30, 0, -1));
  EXPECT_THAT(boxMax, ElementsAre(40, 1, 1));
  EXPECT_EQ(distance, 0.25);
}

TEST_F(OriginShiftTest, BoxIsMovedFirstAndThenScaledWithTheDistanceAndBackTheOtherWay) {
  Triple boxMin = {30, 0, -1};
  Triple boxMax = {40, 1, 1};
  double distance = 0.25;
  const Triple c = {35.25, 0.5, 0.125};
  ApplyShift(c.data(), true, 4.0, boxMin.data(), boxMax.data(), &distance);
  EXPECT_THAT(boxMin, ElementsAre(-21, -2, -4.5));
  EXPECT_THAT(boxMax, ElementsAre(19, 2, 3.5));
  EXPECT_EQ(distance, 1.0);
  RestoreShift(true, 4.0, c.data(), &distance, boxMin.data(), boxMax.data());
  EXPECT_THAT(boxMin, ElementsAre(30, 0, -1));
  EXPECT_THAT(boxMax, ElementsAre(40, 1, 1));
  EXPECT_EQ(distance, 0.25);
}

TEST_F(OriginShiftTest, EveryOperationRoundsByItself) {
  // No product with a reciprocal, and no subtraction joined to it.
  Triple boxMin = {0.1, 0.2, 0.3};
  Triple boxMax = {1.1, 1.2, 1.3};
  double distance = 0.7;
  const Triple c = {1e5 / 3, 1e4 / 3, 1e3 / 3};
  const double s = 5e-5 / 3e-5;
  ApplyShift(c.data(), true, s, boxMin.data(), boxMax.data(), &distance);
  const volatile double moved = 0.1 - 1e5 / 3;
  const volatile double scaled = moved * s;
  EXPECT_EQ(boxMin[0], scaled);
  RestoreShift(true, s, c.data(), &distance, boxMin.data(), boxMax.data());
  const volatile double divided = scaled / s;
  const volatile double back = divided + 1e5 / 3;
  EXPECT_EQ(boxMin[0], back);
  const volatile double longer = 0.7 * s;
  EXPECT_EQ(distance, longer / s);
}

}  // namespace
