#include <cmath>
#include <gmock/gmock.h>
#include <limits>

#include "FileBuilder.h"
#include "PathRecordSamples.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"

namespace {

using formats::FileError;
using formats::PathRecord;
using testing::ElementsAre;
using testing::HasSubstr;

// Three paths, one of each tool type; the first has two cuts.
Bytes ThreePaths() {
  Bytes bytes;
  bytes.Text("binary toolpaths").I32(0).U32(3);
  bytes.I32(1).I32(9);
  AddPlacement(bytes);
  bytes.I32(1).F64(1.5, 2.5, 5, 45, 12, 0.5);
  bytes.U32(2).U32(1).F64(1, 2, 3).U32(2).F64(4, 5, 6, 7, 8, 9);
  bytes.I32(2).I32(200);
  AddPlacement(bytes);
  bytes.I32(2).F64(1, 2).U8(1).F64(3, 4, 5, 6, 7, 8).U8(0).F64(9, 10, 11, 12, 13, 14);
  bytes.U32(1).U32(2).F64(1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0);
  bytes.I32(1).I32(3);
  AddPlacement(bytes);
  bytes.I32(3).I32(2).I32(1);
  bytes.I32(0).F64(1, 2, 3, 4).U8(1).U8(0);
  bytes.I32(2).F64(5, 6, 7, 8).U8(0).U8(1);
  bytes.I32(1).F64(9, 10, 11).U8(1);
  bytes.U32(1).U32(2).F64(1, 2, 3, 4, 5, 6);
  return bytes;
}

std::vector<PathRecord> ThreePathRecords() {
  std::vector<PathRecord> records = {ConvexPath(), UndercutPath(), CustomPath()};
  records[0].cuts.push_back({{4, 5, 6, 7, 8, 9}});
  return records;
}

std::string InterchangeMessage(const std::string& path, std::string_view content) {
  WriteContent(path, content);
  return MessageOf<FileError>([&] { formats::ReadInterchangeFile(path); });
}

// The bytes of one convex 3-axis path with the field at `offset` replaced.
template <typename T>
std::string OnePathWith(std::size_t offset, T value) {
  Bytes bytes;
  bytes.Text("binary toolpaths").I32(0).U32(1).I32(1).I32(9);
  AddPlacement(bytes);
  bytes.I32(1).F64(1.5, 2.5, 5, 45, 12, 0.5).U32(1).U32(1).F64(1, 2, 3);
  std::string content = bytes.Content();
  std::memcpy(content.data() + offset, &value, sizeof value);
  return content;
}

TEST(ReadInterchangeFile, TakesEveryFieldOfEveryToolType) {
  const ScratchDirectory directory;
  WriteContent(directory / "b.tmp", ThreePaths().Content());
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
  const ScratchDirectory directory;
  const std::string whole = ThreePaths().Content();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string message = InterchangeMessage(directory / "cut.tmp", whole.substr(0, length));
    EXPECT_THAT(message, HasSubstr("cut.tmp: the file ends within the ")) << length;
  }
}

TEST(ReadInterchangeFile, LooksAtNothingBehindTheLastPath) {
  const ScratchDirectory directory;
  WriteContent(directory / "b.tmp", ThreePaths().Text("x").Content());
  EXPECT_EQ(formats::ReadInterchangeFile(directory / "b.tmp").size(), 3U);
}

TEST(ReadInterchangeFile, TakesAFileWithoutPaths) {
  const ScratchDirectory directory;
  WriteContent(directory / "b.tmp", Bytes().Text("binary toolpaths").I32(0).U32(0).Content());
  EXPECT_TRUE(formats::ReadInterchangeFile(directory / "b.tmp").empty());
}

TEST(ReadInterchangeFile, RefusesEachWrongFieldAndNamesItsByte) {
  const ScratchDirectory directory;
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
  const ScratchDirectory directory;
  const std::string path = directory / "b.tmp";
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(20, -1)), HasSubstr("(byte 236)"));
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(204, -1)), HasSubstr("(byte 236)"));
  EXPECT_THAT(InterchangeMessage(path, OnePathWith(208, -1)),
              HasSubstr("12884901885 announced, room for 3 (byte 212)"));
}

TEST(ReadInterchangeFile, ChecksTheNumbersOfCustomPieces) {
  const ScratchDirectory directory;
  const auto customPath = [](int arcs, int lines) {
    Bytes bytes;
    bytes.Text("binary toolpaths").I32(0).U32(1).I32(1).I32(9);
    AddPlacement(bytes);
    bytes.I32(3).I32(arcs).I32(lines);
    for (int i = 0; i < lines; ++i) bytes.I32(i).F64(9, 10, 11).U8(1);
    bytes.U32(1).U32(1).F64(1, 2, 3);
    return bytes.Content();
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
  const ScratchDirectory directory;
  std::string content = ThreePaths().Content();
  const std::size_t flip = content.find(Bytes().F64(1, 2).U8(1).F64(3).Content()) + 16;
  content[flip] = '\x80';
  WriteContent(directory / "b.tmp", content);
  ExpectUndercut(formats::ReadInterchangeFile(directory / "b.tmp")[1].tool);
}

TEST(ReadInterchangeFile, PassesNonFiniteDoublesOn) {
  const ScratchDirectory directory;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  WriteContent(directory / "b.tmp", OnePathWith(32, nan));
  EXPECT_TRUE(std::isnan(formats::ReadInterchangeFile(directory / "b.tmp")[0].sweepToler));
}

TEST(WriteInterchangeFile, WritesTheFormatByteForByte) {
  const ScratchDirectory directory;
  formats::WriteInterchangeFile(directory / "b.tmp", ThreePathRecords());
  EXPECT_EQ(ReadContent(directory / "b.tmp"), ThreePaths().Content());
}

TEST(WriteInterchangeFile, RefusesWhatTheFormatCannotHold) {
  const ScratchDirectory directory;
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
