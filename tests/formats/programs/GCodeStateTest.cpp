// Coordinate systems, shifts, home positions, machine coordinates.
#include "tests/formats/programs/ProgramRunner.h"

namespace {

const std::string kAtZero = "T1 M6\nG0 X0 Y0 Z0\n";

Calls After(const std::string& text) {
  Calls calls = CallsOf(kAtZero + text);
  calls.erase(calls.begin(), calls.begin() + 2);
  return calls;
}

TEST(GCodeState, CoordinateSystemsAreZeroUntilSet) {
  for (const char* system : {"G54", "G55", "G56", "G57", "G58", "G59", "G59.1", "G59.3"}) {
    EXPECT_EQ(After(std::string(system) + " X1\n"), (Calls{"rapid 1 0 0"})) << system;
  }
}

TEST(GCodeState, G10SetsTheOriginOfASystem) {
  EXPECT_EQ(After("G10 L2 P1 X10 Y20\nX1\nG55 X1\nG54 X1 Y1\n"),
            (Calls{"rapid 11 0 0", "rapid 1 0 0", "rapid 11 21 0"}));
  EXPECT_EQ(After("G59 G10 L2 P0 Z-5\nZ1\n"), (Calls{"rapid 0 0 -4"}));
  EXPECT_EQ(After("G20 G10 L2 P1 X1\nG21 X0\n"), (Calls{"rapid 25.4 0 0"}));
}

TEST(GCodeState, G10L20NamesTheCurrentPosition) {
  EXPECT_EQ(After("X10\nG10 L20 P1 X3\nX4\n"), (Calls{"rapid 10 0 0", "rapid 11 0 0"}));
  EXPECT_EQ(ErrorOf("T1 M6\nG10 L20 P1 X3\n"),
            "p.ngc: the position on this axis is not known yet (line 2, column 12)");
}

TEST(GCodeState, VariablesHoldTheOrigins) {
  EXPECT_EQ(After("#5241=7 #5222=2\nG55 X1\nG54 Y1\n"), (Calls{"rapid 8 0 0", "rapid 8 3 0"}));
  EXPECT_EQ(After("G10 L2 P3 Z4\nX#5263 Y#5220\nG56\nY#5220\n"),
            (Calls{"rapid 4 1 0", "rapid 4 3 0"}));
}

TEST(GCodeState, AnOriginSetByVariableCountsFromTheNextLineOn) {
  EXPECT_EQ(After("#5221=7 X1\nX2\n"), (Calls{"rapid 1 0 0", "rapid 9 0 0"}));
}

TEST(GCodeState, VariablesHoldThePosition) {
  EXPECT_EQ(After("X3 Y4 Z5\nG91 X#5422 Y#5421 Z#5420\n"), (Calls{"rapid 3 4 5", "rapid 8 8 8"}));
  EXPECT_EQ(After("G20 X2\nG21 Y#5420\n"), (Calls{"rapid 50.8 0 0", "rapid 50.8 2 0"}));
  EXPECT_EQ(ErrorOf("T1 M6\n#1=#5420\n"),
            "p.ngc: the position on this axis is not known yet (line 2, column 4)");
  EXPECT_EQ(ErrorOf("#5420=1\n"), "p.ngc: variable #5420 can only be read (line 1, column 1)");
}

TEST(GCodeState, G92ShiftsTheCoordinates) {
  EXPECT_EQ(After("X10\nG92 X0\nX1\nG92.2\nX1\nG92.3\nX1\nG92.1\nX1\nG92.3\nX1\n"),
            (Calls{"rapid 10 0 0", "rapid 11 0 0", "rapid 1 0 0", "rapid 11 0 0", "rapid 1 0 0",
                   "rapid 1 0 0"}));
}

TEST(GCodeState, G28LeavesTheNamedAxesUnknown) {
  EXPECT_EQ(After("G91 G28 Z5\nG90 G0 X1\nZ2\nX3\n"),
            (Calls{"rapid 0 0 5", "start rapid 1 0 2", "rapid 3 0 2"}));
  EXPECT_EQ(After("G28\nX1 Y1\nZ1\n"), (Calls{"start rapid 1 1 1"}));
  EXPECT_EQ(After("G30 Z1\nG0 X1\nG1 Z0\n"), (Calls{"rapid 0 0 1", "start feed 1 0 0"}));
}

TEST(GCodeState, ADwellMovesNothing) {
  EXPECT_EQ(After("G4 P2\nG4 X1.5\nX1\n"), (Calls{"rapid 1 0 0"}));
}

TEST(GCodeState, MachineCoordinatesAreNotKnown) {
  EXPECT_EQ(After("G53 G0 Z0\nX5\nZ3\n"), (Calls{"start rapid 5 0 3"}));
  EXPECT_NE(ErrorOf(kAtZero + "G53 G2 X1 I1\n"), "");
}

TEST(GCodeState, PlaneAndUnitsOfALineCountForItsOwnMove) {
  EXPECT_EQ(After("G20 X1\n"), (Calls{"rapid 25.4 0 0"}));
  EXPECT_EQ(After("G91 X1\nG90 X1\n"), (Calls{"rapid 1 0 0", "rapid 1 0 0"}));
}

TEST(GCodeState, RefusesSystemsThatAreNone) {
  EXPECT_NE(ErrorOf("G10 L2 P10 X1\n"), "");
  EXPECT_NE(ErrorOf("G10 L2 P-1 X1\n"), "");
  EXPECT_EQ(RunProgram("G10 L1 P1 Z1\n").report.unknown.at(0).word, "G10 L1");
  EXPECT_EQ(RunProgram("G10 L2 P1 X1 R45\n").report.unknown.at(0).word, "G10 R");
}

}  // namespace
