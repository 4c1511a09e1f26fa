#include "formats/programs/AptProgram.h"
#include "formats/programs/ProgramPaths.h"
#include "tests/formats/programs/ProgramRunner.h"

namespace {

class RecordedAptMoves : public formats::AptMoves {
 public:
  void LoadTool(std::int32_t number) override { moves.LoadTool(number); }
  void LoadTool(std::int32_t number, const formats::TableTool& tool) override {
    moves.LoadTool(number);
    tools.push_back(std::get<formats::ConvexTool>(tool.tool));
  }
  bool HasTool(std::int32_t) const override { return false; }
  void SetAxis(const formats::ToolAxis& next) override { axis = next; }
  void Start(const formats::ToolTip& tip, formats::Motion motion) override {
    moves.Start(tip, motion);
    axes.push_back(axis);
  }
  void MoveTo(const formats::ToolTip& tip, formats::Motion motion) override {
    moves.MoveTo(tip, motion);
    axes.push_back(axis);
  }

  RecordedMoves moves;
  std::vector<formats::ConvexTool> tools;
  std::vector<formats::ToolAxis> axes;
  formats::ToolAxis axis = formats::kVerticalAxis;
};

struct AptRun {
  RecordedAptMoves apt;
  formats::AptReport report;
};

AptRun RunText(const std::string& text, const formats::GCodeOptions& options = {}) {
  AptRun run;
  std::istringstream stream(text);
  run.report = formats::RunApt(stream, "p.apt", options, run.apt);
  return run;
}

Calls CallsOfApt(const std::string& text, const formats::GCodeOptions& options = {}) {
  return RunText(text, options).apt.moves.calls;
}

std::string ErrorOfApt(const std::string& text, const formats::GCodeOptions& options = {}) {
  try {
    RunText(text, options);
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return {};
}

const std::string kTool = "CUTTER/10\nLOAD/TOOL,3\n";

TEST(AptProgram, RunsStraightMovesAndMakesOnlyTheNextOneAfterRapidARapid) {
  EXPECT_EQ(CallsOfApt(kTool + "RAPID/\nGOTO/1,2,3\nGOTO/4,5,6\ngo to / 7., +8 ,9E0\nRAPID\n"
                               "GODLTA/1,-1,.5\n"),
            (Calls{"tool 3", "start rapid 1 2 3", "feed 4 5 6", "feed 7 8 9", "rapid 8 7 9.5"}));
}

TEST(AptProgram, ConvertsUnitsFromWhereTheyAreGiven) {
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/1,1,1\nUNITS/INCHES\nGOTO/1,2,0\nUNIT/MM\nGOTO/1,2,0\n"),
            (Calls{"tool 3", "start feed 1 1 1", "feed 25.4 50.8 0", "feed 1 2 0"}));
  EXPECT_EQ(ErrorOfApt("UNIT/FEET\n"), "p.apt: UNIT is neither MM nor INCHES (line 1)");
}

TEST(AptProgram, FromIsWhereTheToolBeginsAndNoMoveLeadsThere) {
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/0,0,5\nFROM/9,9,9\nGOTO/9,9,0\n"),
            (Calls{"tool 3", "start feed 0 0 5", "start rapid 9 9 9", "feed 9 9 0"}));
}

TEST(AptProgram, ALoadedToolBeginsWhereItsFirstMoveEnds) {
  EXPECT_EQ(CallsOfApt("CUTTER/4\nLOADTL/1\nGOTO/1,1,1\nGOTO/2,1,1\nLOAD/TOOL,2\nCUTTER/6\n"
                       "GOTO/5,5,5\nGOTO/6,5,5\n"),
            (Calls{"tool 1", "start feed 1 1 1", "feed 2 1 1", "tool 2", "start feed 5 5 5",
                   "feed 6 5 5"}));
}

TEST(AptProgram, ALoadWithoutACutterTakesTheToolThatItsNumberHadBefore) {
  const AptRun run = RunText(
      "CUTTER/4\nLOAD/TOOL,1\nGOTO/0,0,0\nCUTTER/6\nLOAD/TOOL,2\nGOTO/0,0,0\nLOAD/TOOL,1\n"
      "GOTO/0,0,0\n");
  ASSERT_EQ(run.apt.tools.size(), 3U);
  EXPECT_EQ(run.apt.tools[0].flatRadius, 2);
  EXPECT_EQ(run.apt.tools[1].flatRadius, 3);
  EXPECT_EQ(run.apt.tools[2].flatRadius, 2);
}

TEST(AptProgram, MovesOfAToolThatNobodyHasDescribedAreAnError) {
  EXPECT_EQ(ErrorOfApt("LOAD/TOOL,5\nGOTO/1,2,3\n"),
            "p.apt: tool 5 moves, but no CUTTER has said what it is (line 2)");
  EXPECT_EQ(ErrorOfApt("GOTO/1,2,3\n"), "p.apt: feed move before any LOAD or CUTTER (line 1)");
  EXPECT_EQ(RunText("RAPID/\nGOTO/1,2,3\n").report.withoutTool, 1);
}

TEST(AptProgram, ACircleTurnsByTheRightHandAboutItsAxis) {
  formats::GCodeOptions options;
  options.arcTolerance = 100;  // a quarter turn a chord at the least
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/11,20,0\nCIRCLE/10,20,0,0,0,1.\nGOTO/9,20,0\n", options),
            (Calls{"tool 3", "start feed 11 20 0", "feed 10 21 0", "feed 9 20 0"}));
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/11,20,0\nCIRCLE/10,20,0,0,0,-1.,1.\nGOTO/9,20,4\n", options),
            (Calls{"tool 3", "start feed 11 20 0", "feed 10 19 2", "feed 9 20 4"}));
  // About y: from z towards x.
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/10,5,22\nCIRCLE/10,5,20,0,3,0\nGOTO/10,5,18\n", options),
            (Calls{"tool 3", "start feed 10 5 22", "feed 12 5 20", "feed 10 5 18"}));
}

TEST(AptProgram, ACircleWhoseEndIsItsStartIsAFullOne) {
  formats::GCodeOptions options;
  options.arcTolerance = 100;
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/11,20,0\nCIRCLE/10,20,0,0,0,1\nGOTO/11,20,0\n", options),
            (Calls{"tool 3", "start feed 11 20 0", "feed 10 21 0", "feed 9 20 0", "feed 10 19 0",
                   "feed 11 20 0"}));
}

TEST(AptProgram, RefusesCirclesThatContradictTheirPoints) {
  EXPECT_EQ(ErrorOfApt(kTool + "CIRCLE/0,0,0,0,0,1\nGOTO/1,0,0\n"),
            "p.apt: CIRCLE from a position that is not known (line 4)");
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/5,0,0\nCIRCLE/0,0,0,0,0,1\nGOTO/0,4,0\n"),
            "p.apt: arc whose radius is 5.000000 at its start and 4.000000 at its end (line 5)");
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/5,0,0\nCIRCLE/0,0,0,0,0,1,7\nGOTO/0,5,0\n"),
            "p.apt: CIRCLE whose radius is 7.000000 but whose start is 5.000000 from its centre "
            "(line 5)");
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/5,0,0\nCIRCLE/0,0,0,0,0,0\nGOTO/0,5,0\n"),
            "p.apt: CIRCLE whose axis has no direction (line 5)");
  EXPECT_EQ(ErrorOfApt("CIRCLE/0,0,0\n"),
            "p.apt: CIRCLE takes a centre and an axis, six numbers, and a radius if need be "
            "(line 1)");
}

TEST(AptProgram, DrillsFromTheClearanceToTheDepthAndRetracts) {
  EXPECT_EQ(CallsOfApt(kTool + "RAPID/\nGOTO/0,0,25\nCYCLE/INIT\nCYCLE/DRILL,FEDTO,10.,MMPM,275.,"
                               "RAPTO,3.,RTRCTO,20.,DWELL,0\nGOTO/1,1,0\nGOTO/2,1,0\nCYCLE/OFF\n"
                               "GOTO/0,0,25\n"),
            (Calls{"tool 3", "start rapid 0 0 25", "rapid 1 1 25", "rapid 1 1 3", "feed 1 1 -10",
                   "rapid 1 1 20", "rapid 2 1 20", "rapid 2 1 3", "feed 2 1 -10", "rapid 2 1 20",
                   "feed 0 0 25"}));
}

TEST(AptProgram, TakesDepthAndClearanceWithoutTheirWords) {
  EXPECT_EQ(CallsOfApt(kTool + "CYCLE/DRILL,4,IPM,7,1\nGOTO/1,1,0\n"),
            (Calls{"tool 3", "start rapid 1 1 1", "rapid 1 1 1", "feed 1 1 -4", "rapid 1 1 1"}));
  EXPECT_EQ(ErrorOfApt(kTool + "CYCLE/DRILL,RAPTO,3\n"), "p.apt: CYCLE without a depth (line 3)");
}

TEST(AptProgram, AToolVectorStaysUntilTheNextOneOrMultaxOff) {
  const AptRun run =
      RunText(kTool + "MULTAX/ON\nGOTO/0,0,0,0,3,4\nGOTO/1,0,0\nMULTAX/OFF\nGOTO/2,0,0\n");
  EXPECT_EQ(run.apt.axes,
            (std::vector<formats::ToolAxis>{{0, 0.6, 0.8}, {0, 0.6, 0.8}, {0, 0, 1}}));
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/0,0,0,0,0,0\n"),
            "p.apt: tool vector without a direction (line 3)");
}

TEST(AptProgram, ListsInsertsAndWhatIsNotUnderstood) {
  const AptRun run = RunText(
      "INSERT/Stock X350. $$ 2\ninsert without slash\nPPRINT/GOTO/1\n"
      "TRACUT/1,0,0,0\nSPINDL/100,RPM\nTRACUT/NOMORE\n");
  ASSERT_EQ(run.report.inserts.size(), 2U);
  EXPECT_EQ(run.report.inserts[0].text, "Stock X350. $$ 2");
  EXPECT_EQ(run.report.inserts[1].line, 2);
  ASSERT_EQ(run.report.unknown.size(), 1U);
  EXPECT_EQ(run.report.unknown[0].word, "TRACUT");
  EXPECT_EQ(run.report.unknown[0].lines, (std::vector<std::int64_t>{4, 6}));
  formats::GCodeOptions strict;
  strict.strict = true;
  EXPECT_EQ(ErrorOfApt("\nTRACUT/1\n", strict), "p.apt: TRACUT is not understood (line 2)");
}

TEST(AptProgram, AFrameOtherThanTheProgramsOwnIsListed) {
  const AptRun run = RunText(
      "CSYS/1,0,0,0,0,1,0,0,0,0,1,0\nTRNTYP/WORLD,0,0,0\n"
      "CSYS/1,0,0,5,0,1,0,0,0,0,1,0\nTRNTYP/WORLD,0,0,1\n");
  ASSERT_EQ(run.report.unknown.size(), 2U);
  EXPECT_EQ(run.report.unknown[0].lines, (std::vector<std::int64_t>{3}));
  EXPECT_EQ(run.report.unknown[1].lines, (std::vector<std::int64_t>{4}));
}

TEST(AptProgram, JoinsLinesAndDropsCommentsAndReadsNothingAfterFini) {
  EXPECT_EQ(CallsOfApt("\xEF\xBB\xBF" + kTool + "GOTO/1, $\r\n2,3 $$ y\r\nFINI\n"),
            (Calls{"tool 3", "start feed 1 2 3"}));
  EXPECT_EQ(CallsOfApt(kTool + "GOTO/1,$\n2,3 $$ the rest\nFINI\nGOTO/4,5,6\n"),
            (Calls{"tool 3", "start feed 1 2 3"}));
}

TEST(AptProgram, NamesTheLineInWhichABadStatementEnds) {
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/1,2\n"),
            "p.apt: GOTO takes three numbers, or six with a tool vector (line 3)");
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/1,P1,2\n"), "p.apt: GOTO takes numbers only (line 3)");
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/1,$\n2x,3\n"), "p.apt: 2X is no number (line 4)");
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/1,2,1e999\n"), "p.apt: 1E999 is no number (line 3)");
  EXPECT_EQ(ErrorOfApt("LOAD/TOOL,1.5\n"),
            "p.apt: LOAD takes a tool number, a whole number from 0 to 999999999 (line 1)");
}

TEST(AptProgram, RefusesAStatementWithoutEnd) {
  std::string text;
  for (int i = 0; i < 2000; ++i) text += std::string(60, '1') + "$\n";
  EXPECT_NE(ErrorOfApt(text).find("statement longer than any program's"), std::string::npos);
}

TEST(AptProgram, RefusesACircleOfTooManyChords) {
  formats::GCodeOptions options;
  options.arcTolerance = 1e-12;
  EXPECT_EQ(ErrorOfApt(kTool + "GOTO/1000,0,0\nCIRCLE/0,0,0,0,0,1\nGOTO/-1000,0,0\n", options),
            "p.apt: CIRCLE that would take more than a million chords (line 5)");
}

TEST(AptPaths, ATiltedToolMakesItsPathAFiveAxisOne) {
  std::vector<formats::ProgramPath> paths;
  const formats::ToolTable none;
  formats::ProgramPaths gather(none, {}, [&](formats::ProgramPath path) { paths.push_back(path); });
  std::istringstream program(
      "CUTTER/4\nLOAD/TOOL,1\nGOTO/1,2,3\nGOTO/4,5,6,0,1,0\nLOAD/TOOL,1\n"
      "MULTAX/OFF\nGOTO/7,8,9\n");
  formats::RunApt(program, "p.apt", {}, gather);
  gather.Finish();
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_EQ(paths[0].record.pathType, 2);
  EXPECT_EQ(paths[0].record.cuts[0].coordinates,
            (std::vector<double>{1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0}));
  EXPECT_EQ(paths[1].record.pathType, 1);
  EXPECT_EQ(paths[1].record.cuts[0].coordinates, (std::vector<double>{7, 8, 9}));
}

}  // namespace
