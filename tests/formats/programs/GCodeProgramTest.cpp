#include "tests/formats/programs/ProgramRunner.h"

namespace {

TEST(GCodeProgram, RunsStraightMovesInOrder) {
  EXPECT_EQ(CallsOf("T1 M6\nG0 X1 Y2 Z3\nG1 Z-1 F100\nX5 Y6\nG0 Z3\n"),
            (Calls{"tool 1", "start rapid 1 2 3", "feed 1 2 -1", "feed 5 6 -1", "rapid 5 6 3"}));
}

TEST(GCodeProgram, TheFirstMoveBeginsAtTheFirstFullyGivenPosition) {
  const ProgramRun run = RunProgram("T1 M6\nG0 Z10\nG0 X1\nG0 Y2\nG1 Z0\n");
  EXPECT_EQ(run.moves.calls, (Calls{"tool 1", "start rapid 1 2 10", "feed 1 2 0"}));
  EXPECT_EQ(run.report.beforeStart, 2);
}

TEST(GCodeProgram, NoMoveComesFromBeforeAToolChange) {
  EXPECT_EQ(CallsOf("T1 M6\nG0 X0 Y0 Z5\nG1 X9\nT2 M6\nG0 X1 Y1\nG1 Z0\nT1 M6\nG0 X2\n"),
            (Calls{"tool 1", "start rapid 0 0 5", "feed 9 0 5", "tool 2", "start rapid 1 1 5",
                   "feed 1 1 0", "tool 1", "start rapid 2 1 0"}));
}

TEST(GCodeProgram, AToolIsSelectedByTAndLoadedByM6) {
  EXPECT_EQ(CallsOf("T1\nT2\nM6\nG0 X0 Y0 Z0\nT3\nG0 X1\nM6\n"),
            (Calls{"tool 2", "start rapid 0 0 0", "rapid 1 0 0", "tool 3"}));
  EXPECT_EQ(CallsOf("M61 Q7\n"), (Calls{"tool 7"}));
  EXPECT_EQ(ErrorOf("M6\n"), "p.ngc: M6 before any T word (line 1, column 1)");
  EXPECT_EQ(ErrorOf("T1.5\n"),
            "p.ngc: T takes a whole number from 0 to 999999999 (line 1, column 1)");
}

TEST(GCodeProgram, TheToolOfTheOptionsIsInTheSpindleFromTheStart) {
  formats::GCodeOptions options;
  options.firstTool = 4;
  EXPECT_EQ(CallsOf("G0 X0 Y0 Z0\n", options), (Calls{"tool 4", "start rapid 0 0 0"}));
}

TEST(GCodeProgram, RapidsWithoutAToolAreLeftOutAndCutsRefused) {
  const ProgramRun run = RunProgram("G0 X0 Y0 Z5\nT1 M6\nG0 X1\n");
  EXPECT_EQ(run.moves.calls, (Calls{"tool 1", "start rapid 1 0 5"}));
  EXPECT_EQ(run.report.withoutTool, 1);
  EXPECT_EQ(ErrorOf("G0 X0 Y0 Z5\nG1 Z0\n"),
            "p.ngc: feed move without a tool in the spindle (line 2)");
}

TEST(GCodeProgram, ConvertsInchesAndMillimetresToTheUnitsAskedFor) {
  EXPECT_EQ(CallsOf("T1 M6\nG20 G0 X1 Y2 Z0\nG21 X10\n"),
            (Calls{"tool 1", "start rapid 25.4 50.8 0", "rapid 10 50.8 0"}));
  formats::GCodeOptions inches;
  inches.metric = false;
  EXPECT_EQ(CallsOf("T1 M6\nG0 X1 Y2 Z0\nG21 X25.4\n", inches),
            (Calls{"tool 1", "start rapid 1 2 0", "rapid 1 2 0"}));
}

TEST(GCodeProgram, IncrementalMovesCountFromTheLastPosition) {
  EXPECT_EQ(CallsOf("T1 M6\nG0 X1 Y1 Z1\nG91 X2\nY-1 Z1\nG90 X0\n"),
            (Calls{"tool 1", "start rapid 1 1 1", "rapid 3 1 1", "rapid 3 0 2", "rapid 0 0 2"}));
}

TEST(GCodeProgram, CommentsLineNumbersAndDeletedBlocksMoveNothing) {
  const ProgramRun run = RunProgram(
      "(head) ; more ( of it\nN10 T1 (one) M6\n/ G0 X9 Y9 Z9 [\n n20 g0x1(a)y2 z 3 ; end\n\r\n");
  EXPECT_EQ(run.moves.calls, (Calls{"tool 1", "start rapid 1 2 3"}));
  EXPECT_EQ(run.report.deletedLines, 1);
}

TEST(GCodeProgram, ASecondPercentEndsTheProgram) {
  EXPECT_EQ(CallsOf("\n%\nT1 M6\n%\nT2 M6\n"), (Calls{"tool 1"}));
}

TEST(GCodeProgram, M2AndM30EndTheProgramAfterTheirLine) {
  EXPECT_EQ(CallsOf("T1 M6\nG0 X0 Y0 Z0 M30\nrubbish\n"), (Calls{"tool 1", "start rapid 0 0 0"}));
  EXPECT_EQ(CallsOf("T1 M6 M2\n[\n"), (Calls{"tool 1"}));
}

TEST(GCodeProgram, AByteOrderMarkAheadIsPassedOver) {
  EXPECT_EQ(CallsOf("\xEF\xBB\xBFT1 M6\n"), (Calls{"tool 1"}));
}

TEST(GCodeProgram, ListsWordsItDoesNotUnderstandWithTheirLines) {
  const ProgramRun run =
      RunProgram("T1 M6\nG41 D1\nG0 X0 Y0 Z0 E5\nM98 P5\nG41\no100 sub\nO0042\n");
  ASSERT_EQ(run.report.unknown.size(), 4U);
  EXPECT_EQ(run.report.unknown[0].word, "G41");
  EXPECT_EQ(run.report.unknown[0].lines, (std::vector<std::int64_t>{2, 5}));
  EXPECT_EQ(run.report.unknown[1].word, "E");
  EXPECT_EQ(run.report.unknown[2].word, "M98");
  EXPECT_EQ(run.report.unknown[3].word, "O100SUB");
  EXPECT_EQ(run.report.unknown[3].lines, (std::vector<std::int64_t>{6}));
}

TEST(GCodeProgram, StrictMakesAWordThatIsNotUnderstoodAnError) {
  formats::GCodeOptions strict;
  strict.strict = true;
  EXPECT_EQ(ErrorOf("T1 M6\nG0 X0 G41\n", strict),
            "p.ngc: G41 is not understood (line 2, column 7)");
  EXPECT_EQ(ErrorOf("M98 P1\n", strict), "p.ngc: M98 is not understood (line 1, column 1)");
  EXPECT_EQ(ErrorOf("U5\n", strict), "p.ngc: U is not understood (line 1, column 1)");
  EXPECT_EQ(ErrorOf("o<x> call\n", strict), "p.ngc: O<X>CALL is not understood (line 1, column 1)");
  EXPECT_EQ(ErrorOf("G17 G21 G40 G49 G64 P0.1 G80 G90 G94\nM3 S500 M8\nG4 P1\nF100\n", strict), "");
}

TEST(GCodeProgram, AMotionThatIsNotUnderstoodLeavesItsAxesUnknown) {
  EXPECT_EQ(CallsOf("T1 M6\nG0 X0 Y0 Z0\nG5 X9 Y9\nX7\nG1 Y1\nX2\n"),
            (Calls{"tool 1", "start rapid 0 0 0", "start feed 2 1 0"}));
}

TEST(GCodeProgram, AxisWordsOfAnUnknownCodeAreNotTakenForAMove) {
  EXPECT_EQ(CallsOf("T1 M6\nG0 X0 Y0 Z0\nG68 X5 Y5 R45\nG0 X1 Y1\n"),
            (Calls{"tool 1", "start rapid 0 0 0", "start rapid 1 1 0"}));
}

TEST(GCodeProgram, RefusesLinesThatContradictThemselves) {
  EXPECT_EQ(ErrorOf("G0 G1 X0\n"),
            "p.ngc: G0 and G1 exclude each other in one line (line 1, column 4)");
  EXPECT_EQ(ErrorOf("G17 G18\n"),
            "p.ngc: G17 and G18 exclude each other in one line (line 1, column 5)");
  EXPECT_EQ(ErrorOf("G0 X1 X2\n"), "p.ngc: more than one X word in the line (line 1, column 7)");
  EXPECT_EQ(ErrorOf("X1\n"), "p.ngc: axis word without a motion in force (line 1, column 1)");
  EXPECT_EQ(ErrorOf("G0 X1 A90\n"),
            "p.ngc: rotary axis A turns: only 3-axis programs can be cut (line 1, column 7)");
  EXPECT_EQ(ErrorOf("G0 A0 B0\n"), "");
}

TEST(GCodeProgram, RefusesCommentsThatDoNotClose) {
  EXPECT_EQ(ErrorOf("G0 (a\n"), "p.ngc: comment without \")\" (line 1, column 4)");
  EXPECT_EQ(ErrorOf("(a (b) c)\n"), "p.ngc: \"(\" within a comment (line 1, column 4)");
}

TEST(GCodeProgram, CountsWhatItDid) {
  const formats::GCodeReport report =
      RunProgram("T1 M6\nG0 X0 Y0 Z5\nX10\nG1 Z0\nX0\nG2 X0 Y0 I5\nM2\n").report;
  EXPECT_EQ(report.lines, 7);
  EXPECT_EQ(report.toolLoads, 1);
  EXPECT_EQ(report.rapids, 2);
  EXPECT_EQ(report.feeds, 2);
  EXPECT_EQ(report.arcs, 1);
  EXPECT_DOUBLE_EQ(report.rapidLength, 10);
  EXPECT_NEAR(report.feedLength, 15 + 31.41592653589793, 1e-12);
  EXPECT_EQ(report.low[2], 0);
  EXPECT_EQ(report.high[2], 5);
  EXPECT_EQ(report.high[0], 10);
}

TEST(GCodeProgram, AFileThatIsNotThereIsNamed) {
  RecordedMoves moves;
  EXPECT_THROW(formats::RunGCodeFile("no such file.ngc", {}, moves), formats::FileError);
}

}  // namespace
