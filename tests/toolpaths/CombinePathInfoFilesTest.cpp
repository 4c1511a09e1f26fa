// What well-formed per-path files are combined into, byte for byte, and the order of effects.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"
#include "toolpaths/CombinePathInfoFiles.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CombinePathInfoFilesTest : public ::testing::Test {
 protected:
  CombinePathInfoFilesTest() { host.events.Alias(directory.Path().string(), "job"); }

  void Save(int number, const std::string& bytes) {
    support::WriteWholeFile(directory.Path() / ("TmpPathInfo" + std::to_string(number) + ".tmp"),
                            bytes);
  }
  bool Combine() { return CombinePathInfoFiles(support::AddinSpelling(directory.Path()).c_str()); }
  std::string Bytes() const { return support::ReadWholeFile(directory.Path() / "BinaryPaths.tmp"); }

  void ExpectCombination(const std::vector<support::Path>& paths) {
    for (std::size_t i = 0; i < paths.size(); ++i) {
      Save(static_cast<int>(i), support::PathInfoBytes(paths[i]));
    }
    EXPECT_TRUE(Combine());
    EXPECT_EQ(Bytes(), support::InterchangeBytes(paths));
  }

  support::TempDirectory directory;
  support::TestHost host;
};

TEST_F(CombinePathInfoFilesTest, NoPathsMakeAnEmptyFileAndTrue) {
  EXPECT_TRUE(Combine());
  EXPECT_EQ(Bytes(), support::FileBuilder().Text("binary toolpaths").Int32(0).Int32(0).Bytes());
}

TEST_F(CombinePathInfoFilesTest, WidensTheShortFieldsAndCopiesTheRest) {
  support::FileBuilder input;
  input.Int16(-5).Uint8(200).Doubles({0.1, 0.2, 0.3}).Doubles({1, 2, 3, 4, 5, 6, 7, 8, 9});
  input.Doubles({-1, -2, -3}).Int16(1).Doubles({11, 12, 13, 14, 15, 16});
  input.Doubles({21, 22, 23, 24, 25, 26});
  Save(0, input.Bytes());
  EXPECT_TRUE(Combine());
  support::FileBuilder expected;
  expected.Text("binary toolpaths").Int32(0).Int32(1);
  expected.Int32(-5).Int32(200).Doubles({0.1, 0.2, 0.3}).Doubles({1, 2, 3, 4, 5, 6, 7, 8, 9});
  expected.Doubles({-1, -2, -3}).Int32(1).Doubles({11, 12, 13, 14, 15, 16}).Int32(1).Int32(1);
  // Any path type but 1 has six doubles a position.
  expected.Doubles({21, 22, 23, 24, 25, 26});
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(CombinePathInfoFilesTest, ThreeAxisPositionsHaveThreeDoubles) {
  support::Path path;
  path.positions = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  ExpectCombination({path});
}

TEST_F(CombinePathInfoFilesTest, CustomPiecesAreInterleaved) {
  support::Path path;
  path.tool = support::CustomBlock{
      {{7, {1, 2, 3, 4}, true, false}, {-8, {5, 6, 7, 8}, false, true}},
      {{9, {10, 11, 12}, true}, {10, {13, 14, 15}, false}, {11, {16, 17, 18}, true}}};
  ExpectCombination({path});
}

TEST_F(CombinePathInfoFilesTest, CustomToolOfOneKindOfPieceWillDo) {
  support::Path arcs;
  arcs.tool = support::CustomBlock{{{7, {1, 2, 3, 4}, true, false}}, {}};
  support::Path lines;
  lines.tool = support::CustomBlock{{}, {{9, {10, 11, 12}, true}}};
  ExpectCombination({arcs, lines});
}

TEST_F(CombinePathInfoFilesTest, CustomToolLargerThanABlockIsInterleaved) {
  support::CustomBlock tool;
  for (int i = 0; i < 9000; ++i) {
    const double x = i;
    tool.arcs.push_back({i, {x, x + 1, x + 2, x + 3}, i % 2 == 0, i % 3 == 0});
    tool.lines.push_back({-i, {x, -x, x / 2}, i % 5 == 0});
  }
  support::Path path;
  path.tool = tool;
  ExpectCombination({path, support::Path()});
}

TEST_F(CombinePathInfoFilesTest, FlagBytesAreCopiedAsTheyAre) {
  support::Path path;
  path.tool = support::CustomBlock{{}, {{9, {10, 11, 12}, true}}};
  std::string input = support::PathInfoBytes(path);
  input[2 + 1 + 24 + 72 + 24 + 2 + 8] = '\x80';
  Save(0, input);
  EXPECT_TRUE(Combine());
  std::string expected = support::InterchangeBytes({path});
  expected[24 + 8 + 24 + 72 + 24 + 4 + 8 + 28] = '\x80';
  EXPECT_EQ(Bytes(), expected);
}

TEST_F(CombinePathInfoFilesTest, NegativeCountBesideAPositiveOnePasses) {
  support::Path path;
  path.tool = support::CustomBlock{{}, {{9, {10, 11, 12}, true}, {10, {13, 14, 15}, false}}};
  const std::string minusOne = support::FileBuilder().Int32(-1).Bytes();
  Save(0, support::PathInfoBytes(path).replace(2 + 1 + 24 + 72 + 24 + 2, 4, minusOne));
  EXPECT_TRUE(Combine());
  EXPECT_EQ(Bytes(),
            support::InterchangeBytes({path}).replace(24 + 8 + 24 + 72 + 24 + 4, 4, minusOne));
}

TEST_F(CombinePathInfoFilesTest, UndercutBlockIsReadAndDropped) {
  support::Path path;
  path.tool = support::UndercutBlock{true, false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}};
  Save(0, support::PathInfoBytes(path));
  EXPECT_TRUE(Combine());
  EXPECT_EQ(Bytes(), support::InterchangeBytes({path}).erase(24 + 8 + 24 + 72 + 24 + 4, 114));
}

TEST_F(CombinePathInfoFilesTest, FilesBehindAGapAreIgnored) {
  Save(0, support::PathInfoBytes(support::Path()));
  Save(2, support::PathInfoBytes(support::Path()));
  EXPECT_TRUE(Combine());
  EXPECT_EQ(Bytes(), support::InterchangeBytes({support::Path()}));
}

TEST_F(CombinePathInfoFilesTest, PathsComeInTheOrderOfTheirNumbers) {
  std::vector<support::Path> paths(12);
  for (std::size_t i = 0; i < paths.size(); ++i) {
    paths[i].colour = static_cast<std::uint8_t>(100 + i);
    paths[i].positions.resize(3 * (i + 1), 0.5);
  }
  ExpectCombination(paths);
}

TEST_F(CombinePathInfoFilesTest, FileLargerThanABlockIsCopiedWhole) {
  support::Path three;
  for (int i = 0; i < 30000; ++i) three.positions.push_back(i * 0.1);
  support::Path five = three;
  five.pathType = 2;
  ExpectCombination({three, five, three});
}

TEST_F(CombinePathInfoFilesTest, NoPositionsMakeACutOfNone) {
  support::Path path;
  path.positions.clear();
  ExpectCombination({path, support::Path()});
}

TEST_F(CombinePathInfoFilesTest, OpensAndClosesInOrderUnderTheDriversUnit) {
  Save(0, support::PathInfoBytes(support::Path()));
  Save(1, support::PathInfoBytes(support::Path()));
  EXPECT_TRUE(Combine());
  EXPECT_THAT(
      host.events.Events(),
      ElementsAre("m_fopen_hl QZTUTLA2 job\\ job\\BinaryPaths.tmp wb",
                  "exists job\\TmpPathInfo0.tmp", "exists job\\TmpPathInfo1.tmp",
                  "exists job\\TmpPathInfo2.tmp", "m_fopen_hl QZTUTLA2 job\\ TmpPathInfo0.tmp rb",
                  "m_fclose QZTUTLA2 job\\TmpPathInfo0.tmp",
                  "m_fopen_hl QZTUTLA2 job\\ TmpPathInfo1.tmp rb",
                  "m_fclose QZTUTLA2 job\\TmpPathInfo1.tmp",
                  "m_fclose QZTUTLA2 job\\BinaryPaths.tmp"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CombinePathInfoFilesTest, HostThatWritesTheStatusOnlyOnFailureWillDo) {
  host.statusWrites = support::TestHost::StatusWrites::kOnlyOnFailure;
  ExpectCombination({support::Path(), support::Path()});
}

}  // namespace
