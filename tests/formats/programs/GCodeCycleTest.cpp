#include "tests/formats/programs/ProgramRunner.h"

namespace {

const std::string kAtTen = "T1 M6\nG0 X0 Y0 Z10\n";

Calls After(const std::string& text) {
  Calls calls = CallsOf(kAtTen + text);
  calls.erase(calls.begin(), calls.begin() + 2);
  return calls;
}

TEST(GCodeCycle, DrillsAndGoesBackToTheInitialLevel) {
  EXPECT_EQ(After("G98 G81 X5 Y6 Z-4 R2\n"),
            (Calls{"rapid 5 6 10", "rapid 5 6 2", "feed 5 6 -4", "rapid 5 6 10"}));
}

TEST(GCodeCycle, GoesBackToRUnderG99) {
  EXPECT_EQ(After("G99 G81 X5 Y6 Z-4 R2\nX7\n"),
            (Calls{"rapid 5 6 10", "rapid 5 6 2", "feed 5 6 -4", "rapid 5 6 2", "rapid 7 6 2",
                   "rapid 7 6 2", "feed 7 6 -4", "rapid 7 6 2"}));
}

TEST(GCodeCycle, TheInitialLevelIsThatBeforeTheFirstHole) {
  EXPECT_EQ(After("G99 G81 X5 Y6 Z-4 R2\nG98 X7\n").back(), "rapid 7 6 10");
}

TEST(GCodeCycle, RisesToRFirstWhenBelowIt) {
  EXPECT_EQ(After("G0 Z1\nG81 X5 Y6 Z-4 R2\n"),
            (Calls{"rapid 0 0 1", "rapid 0 0 2", "rapid 5 6 2", "rapid 5 6 2", "feed 5 6 -4",
                   "rapid 5 6 2"}));
}

TEST(GCodeCycle, ADwellMovesNothing) {
  EXPECT_EQ(After("G82 X5 Y6 Z-4 R2 P1.5\n"), After("G81 X5 Y6 Z-4 R2\n"));
}

TEST(GCodeCycle, PecksStepByStep) {
  EXPECT_EQ(
      After("G99 G83 X5 Y6 Z-4 R2 Q2.5\n"),
      (Calls{"rapid 5 6 10", "rapid 5 6 2", "feed 5 6 -0.5", "rapid 5 6 2", "rapid 5 6 -0.246",
             "feed 5 6 -3", "rapid 5 6 2", "rapid 5 6 -2.746", "feed 5 6 -4", "rapid 5 6 2"}));
}

TEST(GCodeCycle, APeckDeeperThanTheHoleIsOnePlunge) {
  EXPECT_EQ(After("G83 X5 Y6 Z-4 R2 Q50\n"), After("G81 X5 Y6 Z-4 R2\n"));
}

TEST(GCodeCycle, RepeatsIncrementalHolesStepByStep) {
  const Calls calls = After("G91 G99 G81 X5 Z-4 R-8 L3\n");
  EXPECT_EQ(calls, (Calls{"rapid 5 0 10", "rapid 5 0 2", "feed 5 0 -2", "rapid 5 0 2",
                          "rapid 10 0 2", "rapid 10 0 2", "feed 10 0 -2", "rapid 10 0 2",
                          "rapid 15 0 2", "rapid 15 0 2", "feed 15 0 -2", "rapid 15 0 2"}));
  EXPECT_EQ(After("G91 G99 G81 X5 Z-4 R-8 K3\n"), calls);
}

TEST(GCodeCycle, WorksAlongTheNormalOfEveryPlane) {
  EXPECT_EQ(After("G18 G0 Y9\nG99 G81 X5 Z6 Y-4 R2\n"),
            (Calls{"rapid 0 9 10", "rapid 5 9 6", "rapid 5 2 6", "feed 5 -4 6", "rapid 5 2 6"}));
  EXPECT_EQ(After("G19 G0 X9\nG99 G81 Y5 Z6 X-4 R2\n"),
            (Calls{"rapid 9 0 10", "rapid 9 5 6", "rapid 2 5 6", "feed -4 5 6", "rapid 2 5 6"}));
}

TEST(GCodeCycle, EndsWithG80AndForgetsItsWords) {
  EXPECT_EQ(ErrorOf(kAtTen + "G81 X5 Y6 Z-4 R2\nG80\nX9\n"),
            "p.ngc: axis word without a motion in force (line 5, column 1)");
  EXPECT_EQ(ErrorOf(kAtTen + "G81 X5 Y6 Z-4 R2\nG0 X1\nG81 X9\n"),
            "p.ngc: canned cycle without R (line 5)");
}

TEST(GCodeCycle, CoordinatesGoWithTheSystemInUse) {
  EXPECT_EQ(After("G10 L2 P2 X100 Y0 Z-50\nG55 G99 G81 X5 Y6 Z-4 R2\n"),
            (Calls{"rapid 105 6 10", "rapid 105 6 -48", "feed 105 6 -54", "rapid 105 6 -48"}));
}

TEST(GCodeCycle, BeginsAboveTheHoleWhenTheHeightIsNotKnown) {
  EXPECT_EQ(CallsOf("T1 M6\nG81 X5 Y6 Z-4 R2\n"),
            (Calls{"tool 1", "start rapid 5 6 2", "rapid 5 6 2", "feed 5 6 -4", "rapid 5 6 2"}));
  EXPECT_NE(ErrorOf("T1 M6\nG0 X0 Y0\nG91 G81 X5 Y6 Z-4 R2\n"), "");
}

TEST(GCodeCycle, AfterAToolChangeItBeginsAboveItsFirstHole) {
  EXPECT_EQ(CallsOf(kAtTen + "T2 M6\nG99 G81 X5 Y6 Z-4 R2\n"),
            (Calls{"tool 1", "start rapid 0 0 10", "tool 2", "start rapid 5 6 10", "rapid 5 6 2",
                   "feed 5 6 -4", "rapid 5 6 2"}));
}

TEST(GCodeCycle, RefusesWhatMakesNoHole) {
  EXPECT_EQ(ErrorOf(kAtTen + "G81 X5 Y6 R2\n"), "p.ngc: canned cycle without Z (line 3)");
  EXPECT_EQ(ErrorOf(kAtTen + "G81 X5 Y6 Z3 R2\n"),
            "p.ngc: canned cycle whose bottom is above its R level (line 3)");
  EXPECT_EQ(ErrorOf(kAtTen + "G83 X5 Y6 Z-3 R2\n"), "p.ngc: G83 without a Q above zero (line 3)");
  EXPECT_EQ(ErrorOf(kAtTen + "G83 X5 Y6 Z-3 R2 Q-1\n"),
            "p.ngc: G83 without a Q above zero (line 3)");
  EXPECT_EQ(ErrorOf(kAtTen + "G81 X5 Y6 Z-3 R2 L0\n"),
            "p.ngc: L takes a whole number above zero (line 3, column 18)");
  EXPECT_EQ(ErrorOf(kAtTen + "G83 X5 Y6 Z-3 R2 Q.000001\n"),
            "p.ngc: canned cycle with too many pecks (line 3)");
}

TEST(GCodeCycle, CountsItsHoles) {
  EXPECT_EQ(RunProgram(kAtTen + "G91 G81 X5 Z-4 R-8 L3\nX1\n").report.holes, 4);
}

}  // namespace
