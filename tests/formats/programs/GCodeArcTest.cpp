#include <algorithm>
#include <cmath>
#include <numbers>

#include "tests/formats/programs/ProgramRunner.h"

namespace {

constexpr double kPi = std::numbers::pi;

// A point of the plane of two axes, seen from a centre.
struct Seen {
  double radius;
  double angle;  // radians, from the first axis to the second
};

Seen From(const formats::ToolTip& tip, std::size_t first, std::size_t second, double centreFirst,
          double centreSecond) {
  const double a = tip[first] - centreFirst;
  const double b = tip[second] - centreSecond;
  return {std::hypot(a, b), std::atan2(b, a)};
}

// The signed angle that the positions run through about a centre, chord by chord.
double Turned(const std::vector<formats::ToolTip>& tips, std::size_t first, std::size_t second,
              double centreFirst, double centreSecond) {
  double sum = 0;
  for (std::size_t i = 1; i < tips.size(); ++i) {
    const double from = From(tips[i - 1], first, second, centreFirst, centreSecond).angle;
    const double to = From(tips[i], first, second, centreFirst, centreSecond).angle;
    sum += std::remainder(to - from, 2 * kPi);
  }
  return sum;
}

std::vector<formats::ToolTip> TipsOf(const std::string& arc, double tolerance = 0.01) {
  formats::GCodeOptions options;
  options.arcTolerance = tolerance;
  return RunProgram("T1 M6\n" + arc, options).moves.tips;
}

void ExpectOnCircle(const std::vector<formats::ToolTip>& tips, std::size_t first,
                    std::size_t second, double centreFirst, double centreSecond, double radius) {
  for (const formats::ToolTip& tip : tips) {
    EXPECT_NEAR(From(tip, first, second, centreFirst, centreSecond).radius, radius, 1e-12);
  }
}

TEST(GCodeArc, ClockwiseQuarterTurnsAboutItsCentre) {
  const auto tips = TipsOf("G0 X10 Y0 Z2\nG2 X0 Y-10 I-10 J0\n");
  ExpectOnCircle(tips, 0, 1, 0, 0, 10);
  EXPECT_NEAR(Turned(tips, 0, 1, 0, 0), -kPi / 2, 1e-12);
  EXPECT_EQ(tips.back(), (formats::ToolTip{0, -10, 2}));
}

TEST(GCodeArc, CounterClockwiseGoesTheOtherWayRound) {
  const auto tips = TipsOf("G0 X10 Y0 Z2\nG3 X0 Y-10 I-10 J0\n");
  EXPECT_NEAR(Turned(tips, 0, 1, 0, 0), 3 * kPi / 2, 1e-12);
}

TEST(GCodeArc, TheXzPlaneTurnsFromZToX) {
  const auto tips = TipsOf("G18 G0 X0 Y7 Z10\nG3 X10 Z0 I0 K-10\n");
  ExpectOnCircle(tips, 2, 0, 0, 0, 10);
  EXPECT_NEAR(Turned(tips, 2, 0, 0, 0), kPi / 2, 1e-12);
  EXPECT_EQ(tips.back(), (formats::ToolTip{10, 7, 0}));
}

TEST(GCodeArc, TheYzPlaneTurnsFromYToZ) {
  const auto tips = TipsOf("G19 G0 X4 Y10 Z0\nG3 Y0 Z10 J-10 K0\n");
  ExpectOnCircle(tips, 1, 2, 0, 0, 10);
  EXPECT_NEAR(Turned(tips, 1, 2, 0, 0), kPi / 2, 1e-12);
  EXPECT_EQ(tips.back(), (formats::ToolTip{4, 0, 10}));
}

TEST(GCodeArc, EndsThatCoincideMakeAFullCircle) {
  EXPECT_NEAR(Turned(TipsOf("G0 X5 Y0 Z0\nG2 I-5\n"), 0, 1, 0, 0), -2 * kPi, 1e-12);
  EXPECT_NEAR(Turned(TipsOf("G0 X5 Y0 Z0\nG3 X5 Y0 I-5\n"), 0, 1, 0, 0), 2 * kPi, 1e-12);
  EXPECT_NEAR(Turned(TipsOf("G0 X5 Y0 Z0\nG3 X5 Y.0000004 I-5\n"), 0, 1, 0, 0), 2 * kPi, 1e-6);
}

TEST(GCodeArc, AShortArcOfAHugeRadiusIsNoFullCircle) {
  const auto tips = TipsOf("G0 X0 Y0 Z0\nG3 X0.01 Y0 R100000\n");
  ASSERT_EQ(tips.size(), 2U);
  EXPECT_EQ(tips.back(), (formats::ToolTip{0.01, 0, 0}));
}

TEST(GCodeArc, AHelixClimbsEvenly) {
  const auto tips = TipsOf("G0 X5 Y0 Z0\nG3 X-5 Y0 Z-4 I-5\n");
  for (std::size_t i = 0; i < tips.size(); ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(tips.size() - 1);
    EXPECT_NEAR(tips[i][2], -4 * share, 1e-12);
    EXPECT_NEAR(tips[i][0], 5 * std::cos(kPi * share), 1e-12);
    EXPECT_NEAR(tips[i][1], 5 * std::sin(kPi * share), 1e-12);
  }
}

TEST(GCodeArc, PAsksForMoreTurns) {
  EXPECT_NEAR(Turned(TipsOf("G0 X5 Y0 Z0\nG3 X5 Y0 Z-4 I-5 P3\n"), 0, 1, 0, 0), 6 * kPi, 1e-11);
  EXPECT_NEAR(Turned(TipsOf("G0 X5 Y0 Z0\nG2 X-5 Y0 I-5 P2\n"), 0, 1, 0, 0), -3 * kPi, 1e-11);
  EXPECT_NE(ErrorOf("T1 M6\nG0 X5 Y0 Z0\nG2 X-5 Y0 I-5 P0\n"), "");
  EXPECT_NE(ErrorOf("T1 M6\nG0 X5 Y0 Z0\nG2 X-5 Y0 I-5 P1.5\n"), "");
}

TEST(GCodeArc, APositiveRadiusTakesTheShortWay) {
  const auto tips = TipsOf("G0 X0 Y0 Z0\nG2 X10 Y10 R10\n");
  ExpectOnCircle(tips, 0, 1, 10, 0, 10);
  EXPECT_NEAR(Turned(tips, 0, 1, 10, 0), -kPi / 2, 1e-12);
  const auto other = TipsOf("G0 X0 Y0 Z0\nG3 X10 Y10 R10\n");
  ExpectOnCircle(other, 0, 1, 0, 10, 10);
  EXPECT_NEAR(Turned(other, 0, 1, 0, 10), kPi / 2, 1e-12);
}

TEST(GCodeArc, ANegativeRadiusTakesTheLongWay) {
  const auto tips = TipsOf("G0 X0 Y0 Z0\nG2 X10 Y10 R-10\n");
  ExpectOnCircle(tips, 0, 1, 0, 10, 10);
  EXPECT_NEAR(Turned(tips, 0, 1, 0, 10), -3 * kPi / 2, 1e-12);
}

TEST(GCodeArc, ARadiusAHairTooSmallMakesHalfATurn) {
  const auto tips = TipsOf("G0 X0 Y0 Z0\nG3 X10 Y0 R4.999\n");
  EXPECT_NEAR(Turned(tips, 0, 1, 5, 0), kPi, 1e-9);
}

TEST(GCodeArc, RefusesRadiiThatCannotBe) {
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X0 Y0 Z0\nG3 X10 Y0 R4\n"),
            "p.ngc: arc whose ends are further apart than the diameter of its R (line 3)");
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X0 Y0 Z0\nG3 X0 Y0 R4\n"),
            "p.ngc: arc with R whose end is its start: it needs I, J, K (line 3)");
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X0 Y0 Z0\nG3 X9 Y0 I5\n"),
            "p.ngc: arc whose radius is 5.000000 at its start and 4.000000 at its end (line 3)");
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X0 Y0 Z0\nG3 X9 Y0 I0 J0\n"),
            "p.ngc: arc whose centre is its start (line 3)");
}

// Up to 0.005 mm a mismatch counts as rounding whatever the radius, above that up to a thousandth
// of the radius, and never above 0.5 mm.
TEST(GCodeArc, TakesMismatchesOfTheRadiiThatRoundingExplains) {
  const auto fault = [](const std::string& end, const std::string& centre) {
    return ErrorOf("T1 M6\nG0 X0 Y0 Z0\nG3 X" + end + " Y0 I" + centre + "\n");
  };
  EXPECT_EQ(fault("2.0049", "1"), "");
  EXPECT_NE(fault("2.0051", "1"), "");
  EXPECT_EQ(fault("200.09", "100"), "");
  EXPECT_NE(fault("200.11", "100"), "");
  EXPECT_EQ(fault("2000.49", "1000"), "");
  EXPECT_NE(fault("2000.51", "1000"), "");
}

TEST(GCodeArc, AMismatchIsSpreadEvenlyAndTheEndIsExact) {
  const auto tips = TipsOf("G0 X100 Y0 Z0\nG3 X0 Y100.05 I-100\n");
  EXPECT_EQ(tips.back(), (formats::ToolTip{0, 100.05, 0}));
  for (std::size_t i = 0; i < tips.size(); ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(tips.size() - 1);
    EXPECT_NEAR(std::hypot(tips[i][0], tips[i][1]), 100 + 0.05 * share, 1e-9);
  }
}

TEST(GCodeArc, CentresAreAbsoluteUnderG901) {
  const auto tips = TipsOf("G0 X10 Y5 Z0\nG90.1\nG3 X5 Y10 I5 J5\n");
  ExpectOnCircle(tips, 0, 1, 5, 5, 5);
  EXPECT_NEAR(Turned(tips, 0, 1, 5, 5), kPi / 2, 1e-12);
  EXPECT_NE(ErrorOf("T1 M6\nG0 X10 Y5 Z0\nG90.1\nG3 X5 Y10 I5\n"), "");
}

TEST(GCodeArc, IncrementalEndsAndInchesCount) {
  const auto tips = TipsOf("G20 G0 X1 Y0 Z0\nG91 G3 X-1 Y1 I-1\n");
  ExpectOnCircle(tips, 0, 1, 0, 0, 25.4);
  EXPECT_NEAR(tips.back()[1], 25.4, 1e-12);
}

TEST(GCodeArc, NoChordStraysByMoreThanTheTolerance) {
  for (const double tolerance : {1.0, 0.1, 0.025, 0.001, 1e-6}) {
    const auto tips = TipsOf("G0 X25 Y0 Z0\nG3 I-25\n", tolerance);
    double worst = 0;
    for (std::size_t i = 1; i < tips.size(); ++i) {
      const double middle =
          std::hypot((tips[i][0] + tips[i - 1][0]) / 2, (tips[i][1] + tips[i - 1][1]) / 2);
      worst = std::max(worst, 25 - middle);
    }
    EXPECT_LE(worst, tolerance * (1 + 1e-6)) << tolerance;
    // Nor are there many more chords than that asks for.
    EXPECT_GE(worst, tolerance * 0.5) << tolerance;
  }
}

TEST(GCodeArc, AToleranceAboveTheRadiusStillTurns) {
  EXPECT_EQ(TipsOf("G0 X5 Y0 Z0\nG3 I-5\n", 100).size(), 5U);
}

TEST(GCodeArc, RefusesArcsOfMoreThanAMillionChords) {
  formats::GCodeOptions options;
  options.arcTolerance = 1e-12;
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X1000 Y0 Z0\nG3 I-1000\n", options),
            "p.ngc: arc that would take more than a million chords (line 3)");
  EXPECT_NE(ErrorOf("T1 M6\nG0 X1000 Y0 Z0\nG3 I-1000 P999999\n"), "");
}

TEST(GCodeArc, NeedsAStartThatIsKnown) {
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X1\nG3 X2 Y2 I5\n"),
            "p.ngc: arc from a position that is not known (line 3)");
}

TEST(GCodeArc, AfterAToolChangeItBeginsWhereItSaysItDoes) {
  const ProgramRun run = RunProgram("T1 M6\nG0 X5 Y0 Z0\nT2 M6\nG3 X-5 I-5\n");
  ASSERT_GT(run.moves.calls.size(), 4U);
  EXPECT_EQ(run.moves.calls[3], "start feed 5 0 0");
}

TEST(GCodeArc, RefusesWordsThatNoArcOfThePlaneHas) {
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X1 Y1 Z1\nG3 X2 Y2 K5\n"),
            "p.ngc: arc centre off the plane in force (line 3, column 10)");
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X1 Y1 Z1\nG3 X2 Y2\n"),
            "p.ngc: arc without centre or radius (line 3)");
}

}  // namespace
