#include <cmath>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "PathRecordSamples.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"
#include "support/FileBuilder.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::FileError;
using formats::PathRecord;
using support::FileBuilder;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;

// Three paths, one of each tool type; the first has two cuts.
FileBuilder ThreePaths() {
  FileBuilder bytes;
  bytes.Text("binary toolpaths").Int32(0).Uint32(3);
  bytes.Int32(1).Int32(9);
  AddPlacement(bytes);
  bytes.Int32(1).Doubles({1.5, 2.5, 5, 45, 12, 0.5});
  bytes.Uint32(2).Uint32(1).Doubles({1, 2, 3}).Uint32(2).Doubles({4, 5, 6, 7, 8, 9});
  bytes.Int32(2).Int32(200);
  AddPlacement(bytes);
  bytes.Int32(2)
      .Doubles({1, 2})
      .Uint8(1)
      .Doubles({3, 4, 5, 6, 7, 8})
      .Uint8(0)
      .Doubles({9, 10, 11, 12, 13, 14});
  bytes.Uint32(1).Uint32(2).Doubles({1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0});
  bytes.Int32(1).Int32(3);
  AddPlacement(bytes);
  bytes.Int32(3).Int32(2).Int32(1);
  bytes.Int32(0).Doubles({1, 2, 3, 4}).Uint8(1).Uint8(0);
  bytes.Int32(2).Doubles({5, 6, 7, 8}).Uint8(0).Uint8(1);
  bytes.Int32(1).Doubles({9, 10, 11}).Uint8(1);
  bytes.Uint32(1).Uint32(2).Doubles({1, 2, 3, 4, 5, 6});
  return bytes;
}

std::vector<PathRecord> ThreePathRecords() {
  std::vector<PathRecord> records = {ConvexPath(), UndercutPath(), CustomPath()};
  records[0].cuts.push_back({{4, 5, 6, 7, 8, 9}});
  return records;
}

std::string InterchangeMessage(const std::string& path, std::string_view content) {
  WriteWholeFile(path, content);
  return MessageOf<FileError>([&] { formats::ReadInterchangeFile(path); });
}

// The bytes of one convex 3-axis path with the field at `offset` replaced.
template <typename T>
std::string OnePathWith(std::size_t offset, T value) {
  FileBuilder bytes;
  bytes.Text("binary toolpaths").Int32(0).Uint32(1).Int32(1).Int32(9);
  AddPlacement(bytes);
  bytes.Int32(1).Doubles({1.5, 2.5, 5, 45, 12, 0.5}).Uint32(1).Uint32(1).Doubles({1, 2, 3});
  std::string content = bytes.Bytes();
  std::memcpy(content.data() + offset, &value, sizeof value);
  return content;
}

TEST(ReadInterchangeFile, TakesEveryFieldOfEveryToolType) {
  const TempDirectory directory;
  WriteWholeFile(directory / "b.tmp", ThreePaths().Bytes());
  const std::vector<PathRecord> records = formats::ReadInterchangeFile(directory / "b.tmp");
  ASSERT_EQ(records.size(), 3U);
  for (const PathRecord& record : records) ExpectPlaced(record);
  EXPECT_EQ(records[0].pathType, 1);
  EXPECT_EQ(records[0].colour, 9);
  ExpectConvex(std::get<formats::ConvexTool>(records[0].tool), 1.5, 2.5, 5, 45, 12, 0.5);
  ASSERT_EQ(records[0].cuts.size(), 2U);
  EXPECT_THAT(records[0].cuts[0].coordinates, ElementsAre(1, 2, 3));
  EXPECT_THAT(records[0].cuts[1].coordinates, ElementsAre(4, 5, 6, 7, 8, 9));
  EXPECT_EQ(records[1].pathType, 2);
  EXPECT_EQ(records[1].colour, 200);
  ExpectUndercut(records[1].tool);
  EXPECT_THAT(records[1].cuts.at(0).coordinates, ElementsAre(1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0));
  ExpectCustom(records[2].tool);
  EXPECT_THAT(records[2].cuts.at(0).coordinates, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(ReadInterchangeFile, RefusesEveryTruncatedLength) {
  const TempDirectory directory;
  const std::string whole = ThreePaths().Bytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string message = InterchangeMessage(directory / "cut.tmp", whole.substr(0, length));
    EXPECT_THAT(message, HasSubstr("cut.tmp: the file ends within the ")) << length;
  }
}

TEST(ReadInterchangeFile, LooksAtNothingBehindTheLastPath) {
  const TempDirectory directory;
  WriteWholeFile(directory / "b.tmp", ThreePaths().Text("x").Bytes());
  EXPECT_EQ(formats::ReadInterchangeFile(directory / "b.tmp").size(), 3U);
}

TEST(ReadInterchangeFile, TakesAFileWithoutPaths) {
  const TempDirectory directory;
  WriteWholeFile(directory / "b.tmp",
                 FileBuilder().Text("binary toolpaths").Int32(0).Uint32(0).Bytes());
  EXPECT_TRUE(formats::ReadInterchangeFile(directory / "b.tmp").empty());
}

TEST(ReadInterchangeFile, RefusesEachWrongFieldAndNamesItsByte) {
  const TempDirectory directory;
  const std::string path = directory / "b.tmp";
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(0, 'B')), HasSubstr("delimiter"));
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(16, 1)),
              HasSubstr("version is 1, not 0 (byte 16)"));
  for (const int type : {0, 3, -1}) {
    EXPECT_THAT(InterchangeMessage(path, OnePathWith(24, type)),
                HasSubstr("path type is " + std::to_string(type) + ", neither 1 nor 2 (byte 24)"));
  }
  for (const int type : {0, 4, -1}) {
    EXPECT_THAT(InterchangeMessage(path, OnePathWith(152, type)),
                HasSubstr("tool type is " + std::to_string(type)));
  }
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(204, 0)),
              HasSubstr("number of cuts is 0 (byte 204)"));
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(208, 0)),
              HasSubstr("number of tool positions is 0 (byte 208)"));
}

TEST(ReadInterchangeFile, RunsIntoTheEndOfTheDataOnHugeCounts) {
  const TempDirectory directory;
  const std::string path = directory / "b.tmp";
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(20, -1)), HasSubstr("(byte 236)"));
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(204, -1)), HasSubstr("(byte 236)"));
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(208, -1)),
              HasSubstr("12884901885 announced, room for 3 (byte 212)"));
}

TEST(ReadInterchangeFile, ChecksTheNumbersOfCustomPieces) {
  const TempDirectory directory;
  const auto customPath = [](int arcs, int lines) {
    FileBuilder bytes;
    bytes.Text("binary toolpaths").Int32(0).Uint32(1).Int32(1).Int32(9);
    AddPlacement(bytes);
    bytes.Int32(3).Int32(arcs).Int32(lines);
    for (int i = 0; i < lines; ++i) bytes.Int32(i).Doubles({9, 10, 11}).Uint8(1);
    bytes.Uint32(1).Uint32(1).Doubles({1, 2, 3});
    return bytes.Bytes();
  };
  const std::string path = directory / "b.tmp";
  EXPECT_THAT(InterchangeMessage(path, customPath(0, 0)), HasSubstr("no pieces (byte 156)"));
  EXPECT_THAT(InterchangeMessage(path, customPath(-1, 2)), HasSubstr("negative (byte 156)"));
  EXPECT_THAT(InterchangeMessage(path, customPath(0, -1)), HasSubstr("negative (byte 160)"));
  EXPECT_EQ(InterchangeMessage(path, customPath(0, 1)), "");
  EXPECT_THAT(InterchangeMessage(path, customPath(2147483647, 1)),
              HasSubstr("2147483647 announced"));
}

TEST(ReadInterchangeFile, TakesEveryFlagButZeroAsTrue) {
  const TempDirectory directory;
  std::string content = ThreePaths().Bytes();
  const std::size_t flip =
      content.find(FileBuilder().Doubles({1, 2}).Uint8(1).Double(3).Bytes()) + 16;
  content[flip] = '\x80';
  WriteWholeFile(directory / "b.tmp", content);
  ExpectUndercut(formats::ReadInterchangeFile(directory / "b.tmp")[1].tool);
}

TEST(ReadInterchangeFile, PassesNonFiniteDoublesOn) {
  const TempDirectory directory;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  WriteWholeFile(directory / "b.tmp", OnePathWith(32, nan));
  EXPECT_TRUE(std::isnan(formats::ReadInterchangeFile(directory / "b.tmp")[0].sweepToler));
}

TEST(WriteInterchangeFile, WritesTheFormatByteForByte) {
  const TempDirectory directory;
  formats::WriteInterchangeFile(directory / "b.tmp", ThreePathRecords());
  EXPECT_EQ(ReadWholeFile(directory / "b.tmp"), ThreePaths().Bytes());
}

TEST(WriteInterchangeFile, RefusesWhatTheFormatCannotHold) {
  const TempDirectory directory;
  const auto message = [&](const PathRecord& record) {
    return MessageOf<FileError>(
        [&] { formats::WriteInterchangeFile(directory / "b.tmp", {record}); });
  };
  PathRecord record = ConvexPath();
  record.pathType = 3;
  EXPECT_THAT(message(record), HasSubstr("no path type 3"));
  record = ConvexPath();
  record.tool = formats::CustomTool{};
  EXPECT_THAT(message(record), HasSubstr("no pieces"));
  record = ConvexPath();
  record.cuts.clear();
  EXPECT_THAT(message(record), HasSubstr("no cuts"));
  record = ConvexPath();
  record.cuts[0].coordinates.clear();
  EXPECT_THAT(message(record), HasSubstr("no positions"));
  record = ConvexPath();
  record.cuts[0].coordinates.pop_back();
  EXPECT_THAT(message(record), HasSubstr("not complete"));
  EXPECT_FALSE(std::filesystem::exists(directory / "b.tmp"));
}

}  // namespace
