// The text form of well-formed files, line by line.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "InterchangeLines.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"
#include "toolpaths/DumpBinaryPathsText.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DumpBinaryPathsTextTest : public ::testing::Test {
 protected:
  DumpBinaryPathsTextTest() { host.events.Alias(directory.Path().string(), "job"); }

  bool Dump(const std::string& bytes) {
    support::WriteWholeFile(directory.Path() / "BinaryPaths.tmp", bytes);
    return DumpBinaryPathsText(support::AddinSpelling(directory.Path()).c_str());
  }
  std::string Text() const { return support::ReadTextFile(directory.Path() / "BinaryPaths.txt"); }

  void ExpectConversion(const std::vector<support::Path>& paths) {
    EXPECT_TRUE(Dump(support::InterchangeBytes(paths)));
    EXPECT_EQ(Text(), lines::File(paths));
  }

  support::TempDirectory directory;
  support::TestHost host;
};

support::Path FiveAxisPath() {
  support::Path path;
  path.pathType = 2;
  path.positions = {0, 0, 10, 0, 0, 1, 20, -1.5, 10, 0.6, 0, 0.8};
  return path;
}

TEST_F(DumpBinaryPathsTextTest, WritesOneLineAValueExactly) {
  support::FileBuilder file;
  file.Text("binary toolpaths").Int32(0).Uint32(1).Int32(1).Int32(255);
  file.Doubles({0.025, 0.5, 0.25}).Doubles({1, 2, 3, 4, 5, 6, 7, 8, 9}).Doubles({-1, -2, -3});
  file.Int32(1).Doubles({1.5, 2.5, 3.5, 90, 4.5, 5.5}).Uint32(1).Uint32(1);
  file.Doubles({-0.0, 100.125, 123456.0625});
  EXPECT_TRUE(Dump(file.Bytes()));
  EXPECT_EQ(Text(),
            "binary toolpaths //16 chars delimiter is not written\n"
            "0 //file format version\n"
            "1 //number of paths (0 or more)\n"
            "1 //pathType 1=3-axis, 2=5-axis\n"
            "255 //color\n"
            "        0.0250000000 //sweepToler (aka toolToler)\n"
            "        0.5000000000 //pathToler\n"
            "        0.2500000000 //compressToler\n"
            "        1.0000000000 //matrix[0,0]\n"
            "        2.0000000000 //matrix[0,1]\n"
            "        3.0000000000 //matrix[0,2]\n"
            "        4.0000000000 //matrix[1,0]\n"
            "        5.0000000000 //matrix[1,1]\n"
            "        6.0000000000 //matrix[1,2]\n"
            "        7.0000000000 //matrix[2,0]\n"
            "        8.0000000000 //matrix[2,1]\n"
            "        9.0000000000 //matrix[2,2]\n"
            "       -1.0000000000 //origin[0]\n"
            "       -2.0000000000 //origin[1]\n"
            "       -3.0000000000 //origin[2]\n"
            "1 //tool type 1=standard convex, 2=standard undercut, 3=standard custom\n"
            "        1.5000000000 //corner radius\n"
            "        2.5000000000 //flat radius\n"
            "        3.5000000000 //upper taper angle\n"
            "       90.0000000000 //lower taper angle\n"
            "        4.5000000000 //taper height\n"
            "        5.5000000000 //upper bevel radius\n"
            "1 //number of Cuts (1 or more)\n"
            "1 //number of Tool Positions (1 or more)\n"
            "       -0.0000000000       100.1250000000    123456.0625000000"
            " // 3axis tip position\n");
}

TEST_F(DumpBinaryPathsTextTest, LinesEndAsTheSystemEndsThem) {
  EXPECT_TRUE(Dump(support::InterchangeBytes({})));
  const std::string raw = support::ReadWholeFile(directory.Path() / "BinaryPaths.txt");
  FILE* probe = std::fopen((directory.Path() / "probe.txt").string().c_str(), "w");
  std::fputs("\n", probe);
  std::fclose(probe);
  const std::string end = support::ReadWholeFile(directory.Path() / "probe.txt");
  EXPECT_THAT(raw, ::testing::EndsWith("0 //number of paths (0 or more)" + end));
  EXPECT_EQ(raw.size(), Text().size() + 3 * (end.size() - 1));
}

TEST_F(DumpBinaryPathsTextTest, NoPathsMakeThreeLinesAndTrue) {
  EXPECT_TRUE(Dump(support::InterchangeBytes({})));
  EXPECT_EQ(Text(), lines::Head("0"));
}

TEST_F(DumpBinaryPathsTextTest, FiveAxisPositionsTakeTwoLines) {
  ExpectConversion({FiveAxisPath()});
  EXPECT_THAT(Text(),
              ::testing::EndsWith("        0.6000000000         0.0000000000         0.8000000000"
                                  " // 5axis ijk vector\n"));
}

TEST_F(DumpBinaryPathsTextTest, UndercutToolIsConvertedFieldByField) {
  support::Path path;
  path.tool = support::UndercutBlock{true, false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}};
  ExpectConversion({path});
  EXPECT_THAT(Text(), ::testing::HasSubstr("        1.0000000000 //arm radius\n"
                                           "        2.0000000000 //arm height\n"
                                           "true //use flip tool\n"
                                           "        3.0000000000 //flip corner radius\n"));
  EXPECT_THAT(Text(), ::testing::HasSubstr("        8.0000000000 //flip upper bevel radius\n"
                                           "false //use regular tool\n"
                                           "        9.0000000000 //regular corner radius\n"));
}

TEST_F(DumpBinaryPathsTextTest, CustomToolIsConvertedPieceByPiece) {
  support::Path path;
  path.tool = support::CustomBlock{
      {{7, {1, 2, 3, 4}, true, false}, {-8, {5, 6, 7, 8}, false, true}}, {{9, {10, 11, 12}, true}}};
  ExpectConversion({path});
  EXPECT_THAT(Text(), ::testing::HasSubstr("-8 //custom arc piece index\n"
                                           "        5.0000000000 //radius\n"
                                           "        6.0000000000 //angle Min\n"
                                           "        7.0000000000 //angle Max\n"
                                           "        8.0000000000 //flat Length\n"
                                           "false //flip\n"
                                           "true //convex\n"
                                           "9 //custom line piece index\n"
                                           "       10.0000000000 //height\n"
                                           "       11.0000000000 //taper Angle\n"
                                           "       12.0000000000 //flat Length\n"
                                           "true //flip\n"));
}

TEST_F(DumpBinaryPathsTextTest, OneLineAloneMakesACustomTool) {
  support::Path path;
  path.tool = support::CustomBlock{{}, {{1, {2, 3, 4}, false}}};
  ExpectConversion({path});
}

TEST_F(DumpBinaryPathsTextTest, AnyFlagByteButZeroIsTrue) {
  support::Path path;
  path.tool = support::CustomBlock{{}, {{1, {2, 3, 4}, true}}};
  std::string bytes = support::InterchangeBytes({path});
  bytes[24 + 8 + 24 + 72 + 24 + 4 + 8 + 28] = '\x80';
  EXPECT_TRUE(Dump(bytes));
  EXPECT_EQ(Text(), lines::File({path}));
}

TEST_F(DumpBinaryPathsTextTest, SeveralPathsAndCutsFollowEachOther) {
  const support::Path first{};
  const support::Path second = FiveAxisPath();
  support::Path other = second;
  other.positions = {9, 8, 7, 1, 0, 0};
  std::string bytes = support::InterchangeBytes({first, second});
  // The second path's number of cuts, in front of its number of positions.
  bytes[bytes.size() - 12 * 8 - 8] = '\2';
  bytes += support::FileBuilder().Uint32(1).Doubles(other.positions).Bytes();
  EXPECT_TRUE(Dump(bytes));
  EXPECT_EQ(Text(), lines::Head("2") + lines::PathHead(first) + lines::Cut(first) +
                        lines::PathHead(second, "2") + lines::Cut(second) + lines::Cut(other));
}

TEST_F(DumpBinaryPathsTextTest, FileLargerThanABlockIsConvertedWhole) {
  support::Path path;
  path.positions.clear();
  for (int i = 0; i < 30000; ++i) path.positions.push_back(i * 0.125 - 1000);
  support::Path five = FiveAxisPath();
  five.positions = path.positions;
  ExpectConversion({path, five, path});
}

TEST_F(DumpBinaryPathsTextTest, WidestNumbersFit) {
  support::Path path;
  path.positions = {-1.7976931348623157e308, 1.7976931348623157e308, -1.7976931348623157e308};
  for (int i = 0; i < 3 * 400; ++i) path.positions.push_back(-1e300);
  EXPECT_TRUE(Dump(support::InterchangeBytes({path})));
  const std::string text = Text();
  const std::string line(text.substr(text.find("-17976931348623157")));
  EXPECT_EQ(line.find(" // 3axis tip position\n"), 321u + 1 + 320 + 1 + 321);
}

TEST_F(DumpBinaryPathsTextTest, DelimiterIsComparedWithNothing) {
  std::string bytes = support::InterchangeBytes({});
  bytes.replace(0, 16, "something else..");
  EXPECT_TRUE(Dump(bytes));
  EXPECT_THAT(Text(), ::testing::StartsWith("something else.. //16 chars"));
}

TEST_F(DumpBinaryPathsTextTest, DelimiterIsWrittenUpToItsFirstZeroByte) {
  std::string bytes = support::InterchangeBytes({});
  bytes[6] = '\0';
  EXPECT_TRUE(Dump(bytes));
  EXPECT_THAT(Text(), ::testing::StartsWith("binary //16 chars delimiter is not written\n0 //"));
}

TEST_F(DumpBinaryPathsTextTest, BytesBehindTheLastPathAreNotLookedAt) {
  EXPECT_TRUE(Dump(support::InterchangeBytes({support::Path()}) + "more"));
  EXPECT_EQ(Text(), lines::File({support::Path()}));
}

TEST_F(DumpBinaryPathsTextTest, OlderTextIsReplaced) {
  support::WriteWholeFile(directory.Path() / "BinaryPaths.txt", std::string(10000, 'x'));
  EXPECT_TRUE(Dump(support::InterchangeBytes({})));
  EXPECT_EQ(Text(), lines::Head("0"));
}

TEST_F(DumpBinaryPathsTextTest, UsesPlainFilesAndClosesThem) {
  EXPECT_TRUE(Dump(support::InterchangeBytes({})));
  EXPECT_THAT(host.events.Only({"m_"}), IsEmpty());
  EXPECT_THAT(host.events.Only({"fopen"}),
              ElementsAre("fopen job\\BinaryPaths.tmp rb", "fopen job\\BinaryPaths.txt w"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

}  // namespace
