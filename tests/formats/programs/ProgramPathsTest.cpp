#include <sstream>

#include "formats/programs/ProgramPaths.h"
#include "tests/formats/programs/ProgramRunner.h"

namespace {

using formats::ProgramPath;

formats::ToolTable TwoTools() {
  formats::ToolTable table;
  table[1] = {"end mill", formats::ConvexTool{0, 5, 0, 90, 0, 0}, std::nullopt};
  table[2] = {"ball", formats::ConvexTool{4, 0, 0, 90, 0, 0}, 7};
  return table;
}

std::vector<ProgramPath> PathsOf(const std::string& program,
                                 const formats::PathSettings& settings = {}) {
  const formats::ToolTable table = TwoTools();
  std::vector<ProgramPath> result;
  formats::ProgramPaths paths(table, settings,
                              [&](ProgramPath path) { result.push_back(std::move(path)); });
  std::istringstream stream(program);
  formats::RunGCode(stream, "p.ngc", {}, paths);
  paths.Finish();
  return result;
}

std::vector<double> Positions(const ProgramPath& path) {
  return path.record.cuts.at(0).coordinates;
}

TEST(ProgramPaths, OneToolLoadIsOnePathOfOneCut) {
  formats::PathSettings settings;
  settings.colour = 3;
  settings.sweepToler = 0.025;
  settings.pathToler = 0.01;
  settings.compressToler = 0.5;
  const auto paths = PathsOf("T1 M6\nG0 X0 Y0 Z5\nG1 Z0\nG0 X9\nG1 Z-1\n", settings);
  ASSERT_EQ(paths.size(), 1U);
  const formats::PathRecord& record = paths[0].record;
  EXPECT_EQ(record.pathType, 1);
  EXPECT_EQ(record.colour, 3);
  EXPECT_EQ(record.sweepToler, 0.025);
  EXPECT_EQ(record.pathToler, 0.01);
  EXPECT_EQ(record.compressToler, 0.5);
  EXPECT_EQ(record.matrix, (std::array<double, 9>{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  EXPECT_EQ(record.origin, (std::array<double, 3>{0, 0, 0}));
  EXPECT_EQ(std::get<formats::ConvexTool>(record.tool).flatRadius, 5);
  ASSERT_EQ(record.cuts.size(), 1U);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{0, 0, 5, 0, 0, 0, 9, 0, 0, 9, 0, -1}));
}

TEST(ProgramPaths, AToolThatComesBackIsAPathOfItsOwn) {
  const auto paths =
      PathsOf("T1 M6\nG0 X0 Y0 Z-5\nX1\nT2 M6\nG0 X20 Y0 Z5\nX21\nT1 M6\nG0 X40 Y0 Z-5\nX41\n");
  ASSERT_EQ(paths.size(), 3U);
  EXPECT_EQ(paths[0].tool, 1);
  EXPECT_EQ(paths[1].tool, 2);
  EXPECT_EQ(paths[2].tool, 1);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{0, 0, -5, 1, 0, -5}));
  EXPECT_EQ(Positions(paths[2]), (std::vector<double>{40, 0, -5, 41, 0, -5}));
  EXPECT_EQ(paths[2].load, 2);
}

TEST(ProgramPaths, AToolsOwnColourStandsAheadOfTheCommonOne) {
  const auto paths = PathsOf("T1 M6\nG0 X0 Y0 Z5\nT2 M6\nG0 X20\n");
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_EQ(paths[0].record.colour, 1);
  EXPECT_EQ(paths[1].record.colour, 7);
}

TEST(ProgramPaths, AnUnknownPositionEndsAPathWithinALoad) {
  const auto paths = PathsOf("T1 M6\nG0 X0 Y0 Z5\nX1\nG28 Z6\nG0 X9\nZ5\nX10\n");
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{0, 0, 5, 1, 0, 5, 1, 0, 6}));
  EXPECT_EQ(Positions(paths[1]), (std::vector<double>{9, 0, 5, 10, 0, 5}));
  EXPECT_EQ(paths[1].load, 0);
}

TEST(ProgramPaths, RapidsAreTheirOwnPathsInTheirColour) {
  formats::PathSettings settings;
  settings.rapidColour = 9;
  const auto paths = PathsOf("T2 M6\nG0 X0 Y0 Z5\nX3\nG1 Z0\nX4\nG0 Z5\nX8\nG1 Z0\n", settings);
  ASSERT_EQ(paths.size(), 4U);
  EXPECT_TRUE(paths[0].rapid);
  EXPECT_EQ(paths[0].record.colour, 9);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{0, 0, 5, 3, 0, 5}));
  EXPECT_FALSE(paths[1].rapid);
  EXPECT_EQ(paths[1].record.colour, 7);
  EXPECT_EQ(Positions(paths[1]), (std::vector<double>{3, 0, 5, 3, 0, 0, 4, 0, 0}));
  EXPECT_EQ(Positions(paths[2]), (std::vector<double>{4, 0, 0, 4, 0, 5, 8, 0, 5}));
  EXPECT_EQ(Positions(paths[3]), (std::vector<double>{8, 0, 5, 8, 0, 0}));
}

TEST(ProgramPaths, ARapidThatOnlyGivesTheStartIsNoPathAheadOfACut) {
  formats::PathSettings settings;
  settings.rapidColour = 9;
  const auto paths = PathsOf("T1 M6\nG0 X0 Y0 Z5\nG1 Z0\n", settings);
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_FALSE(paths[0].rapid);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{0, 0, 5, 0, 0, 0}));
}

TEST(ProgramPaths, AToolThatOnlyStandsIsAPathOfOnePosition) {
  const auto paths = PathsOf("T1 M6\nG0 X1 Y2 Z3\n");
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{1, 2, 3}));
}

TEST(ProgramPaths, MovesOfNoLengthAreLeftOut) {
  const auto paths = PathsOf("T1 M6\nG0 X1 Y2 Z3\nX1\nX2\nY2\n");
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_EQ(Positions(paths[0]), (std::vector<double>{1, 2, 3, 2, 2, 3}));
}

TEST(ProgramPaths, ALoadWithoutMovesIsNoPath) {
  EXPECT_EQ(PathsOf("T1 M6\nT2 M6\nG0 X1 Y1 Z1\nT0 M6\n").size(), 1U);
}

TEST(ProgramPaths, AToolThatTheTableLacksIsNamedWithItsLine) {
  try {
    PathsOf("T1 M6\nG0 X1 Y1 Z1\nT5 M6\n");
    FAIL() << "no error";
  } catch (const formats::FileError& error) {
    EXPECT_STREQ(error.what(), "p.ngc: tool 5 is not in the tool table (line 3, column 4)");
  }
}

}  // namespace
