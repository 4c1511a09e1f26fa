#include <cmath>
#include <gmock/gmock.h>
#include <limits>

#include "FileBuilder.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"
#include "formats/PathInfoFile.h"

namespace {

using formats::FileError;
using formats::PathRecord;
using testing::ElementsAre;
using testing::HasSubstr;

// Tolerances 0.1, 0.2, 0.3, the matrix 1..9 and the origin 10, 20, 30.
void AddPlacement(Bytes& bytes) {
  bytes.F64(0.1, 0.2, 0.3).F64(1, 2, 3, 4, 5, 6, 7, 8, 9).F64(10, 20, 30);
}

PathRecord Placed(std::int32_t pathType, std::int32_t colour) {
  PathRecord record;
  record.pathType = pathType;
  record.colour = colour;
  record.sweepToler = 0.1;
  record.pathToler = 0.2;
  record.compressToler = 0.3;
  record.matrix = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  record.origin = {10, 20, 30};
  return record;
}

PathRecord ConvexPath() {
  PathRecord record = Placed(1, 9);
  record.tool = formats::ConvexTool{1.5, 2.5, 5, 45, 12, 0.5};
  record.cuts = {{{1, 2, 3}}};
  return record;
}

PathRecord UndercutPath() {
  PathRecord record = Placed(2, 200);
  formats::UndercutTool tool;
  tool.armRadius = 1;
  tool.armHeight = 2;
  tool.useFlip = true;
  tool.flip = {3, 4, 5, 6, 7, 8};
  tool.useRegular = false;
  tool.regular = {9, 10, 11, 12, 13, 14};
  record.tool = tool;
  record.cuts = {{{1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0}}};
  return record;
}

PathRecord CustomPath() {
  PathRecord record = Placed(1, 3);
  formats::CustomTool tool;
  tool.arcs = {{0, 1, 2, 3, 4, true, false}, {2, 5, 6, 7, 8, false, true}};
  tool.lines = {{1, 9, 10, 11, true}};
  record.tool = tool;
  record.cuts = {{{1, 2, 3, 4, 5, 6}}};
  return record;
}

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

void ExpectPlaced(const PathRecord& record) {
  EXPECT_EQ(record.sweepToler, 0.1);
  EXPECT_EQ(record.pathToler, 0.2);
  EXPECT_EQ(record.compressToler, 0.3);
  EXPECT_THAT(record.matrix, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_THAT(record.origin, ElementsAre(10, 20, 30));
}

void ExpectConvex(const formats::ConvexTool& tool, double cornerRadius, double flatRadius,
                  double upperTaperAngle, double lowerTaperAngle, double taperHeight,
                  double upperBevelRadius) {
  EXPECT_EQ(tool.cornerRadius, cornerRadius);
  EXPECT_EQ(tool.flatRadius, flatRadius);
  EXPECT_EQ(tool.upperTaperAngle, upperTaperAngle);
  EXPECT_EQ(tool.lowerTaperAngle, lowerTaperAngle);
  EXPECT_EQ(tool.taperHeight, taperHeight);
  EXPECT_EQ(tool.upperBevelRadius, upperBevelRadius);
}

void ExpectUndercut(const formats::Tool& tool) {
  const auto& undercut = std::get<formats::UndercutTool>(tool);
  EXPECT_EQ(undercut.armRadius, 1);
  EXPECT_EQ(undercut.armHeight, 2);
  EXPECT_TRUE(undercut.useFlip);
  ExpectConvex(undercut.flip, 3, 4, 5, 6, 7, 8);
  EXPECT_FALSE(undercut.useRegular);
  ExpectConvex(undercut.regular, 9, 10, 11, 12, 13, 14);
}

void ExpectCustom(const formats::Tool& tool) {
  const auto& custom = std::get<formats::CustomTool>(tool);
  ASSERT_EQ(custom.arcs.size(), 2U);
  EXPECT_EQ(custom.arcs[0].index, 0);
  EXPECT_EQ(custom.arcs[0].radius, 1);
  EXPECT_EQ(custom.arcs[0].angleMin, 2);
  EXPECT_EQ(custom.arcs[0].angleMax, 3);
  EXPECT_EQ(custom.arcs[0].flatLength, 4);
  EXPECT_TRUE(custom.arcs[0].flip);
  EXPECT_FALSE(custom.arcs[0].convex);
  EXPECT_EQ(custom.arcs[1].index, 2);
  EXPECT_EQ(custom.arcs[1].radius, 5);
  EXPECT_FALSE(custom.arcs[1].flip);
  EXPECT_TRUE(custom.arcs[1].convex);
  ASSERT_EQ(custom.lines.size(), 1U);
  EXPECT_EQ(custom.lines[0].index, 1);
  EXPECT_EQ(custom.lines[0].height, 9);
  EXPECT_EQ(custom.lines[0].taperAngle, 10);
  EXPECT_EQ(custom.lines[0].flatLength, 11);
  EXPECT_TRUE(custom.lines[0].flip);
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

// Per-path files of the three tool types.

Bytes ConvexInfo() {
  Bytes bytes;
  bytes.I16(1).U8(9);
  AddPlacement(bytes);
  bytes.I16(1).F64(1.5, 2.5, 5, 45, 12, 0.5).F64(1, 2, 3);
  return bytes;
}

Bytes UndercutInfo() {
  Bytes bytes;
  bytes.I16(2).U8(200);
  AddPlacement(bytes);
  bytes.I16(2).U8(1).U8(0).F64(1, 2).F64(3, 4, 5, 6, 7, 8).F64(9, 10, 11, 12, 13, 14);
  bytes.F64(1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0);
  return bytes;
}

Bytes CustomInfo() {
  Bytes bytes;
  bytes.I16(1).U8(3);
  AddPlacement(bytes);
  bytes.I16(3).I32(2).I32(1);
  bytes.U8(1).U8(0).I32(0).I32(2).F64(1, 2, 3, 4).F64(5, 6, 7, 8).U8(0).U8(1);
  bytes.U8(1).I32(1).F64(9, 10, 11);
  bytes.F64(1, 2, 3, 4, 5, 6);
  return bytes;
}

std::string InfoMessage(const std::string& path, std::string_view content) {
  WriteContent(path, content);
  return MessageOf<FileError>([&] { formats::ReadPathInfoFile(path); });
}

TEST(ReadPathInfoFile, TakesAConvexTool) {
  const ScratchDirectory directory;
  WriteContent(directory / "p.tmp", ConvexInfo().Content());
  const PathRecord record = formats::ReadPathInfoFile(directory / "p.tmp");
  EXPECT_EQ(record.pathType, 1);
  EXPECT_EQ(record.colour, 9);
  ExpectPlaced(record);
  ExpectConvex(std::get<formats::ConvexTool>(record.tool), 1.5, 2.5, 5, 45, 12, 0.5);
  EXPECT_THAT(record.cuts.at(0).coordinates, ElementsAre(1, 2, 3));
}

TEST(ReadPathInfoFile, TakesAnUndercutToolOnAFiveAxisPath) {
  const ScratchDirectory directory;
  WriteContent(directory / "p.tmp", UndercutInfo().Content());
  const PathRecord record = formats::ReadPathInfoFile(directory / "p.tmp");
  EXPECT_EQ(record.pathType, 2);
  EXPECT_EQ(record.colour, 200);
  ExpectPlaced(record);
  ExpectUndercut(record.tool);
  EXPECT_EQ(record.cuts.at(0).coordinates.size(), 12U);
}

TEST(ReadPathInfoFile, TakesACustomToolsParallelArrays) {
  const ScratchDirectory directory;
  WriteContent(directory / "p.tmp", CustomInfo().Content());
  const PathRecord record = formats::ReadPathInfoFile(directory / "p.tmp");
  ExpectPlaced(record);
  ExpectCustom(record.tool);
  EXPECT_THAT(record.cuts.at(0).coordinates, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(ReadPathInfoFile, RefusesEveryLengthThatIsNotAWholeNumberOfPositions) {
  const ScratchDirectory directory;
  struct Case {
    std::string content;
    std::size_t position;
    std::size_t positions;
  };
  for (const Case& file :
       {Case{ConvexInfo().Content(), 24, 1}, Case{UndercutInfo().Content(), 48, 2},
        Case{CustomInfo().Content(), 24, 2}}) {
    const std::size_t fixed = file.content.size() - file.position * file.positions;
    for (std::size_t length = 0; length <= file.content.size() + 1; ++length) {
      const bool whole = length > fixed && (length - fixed) % file.position == 0;
      const std::string content = (file.content + "x").substr(0, length);
      EXPECT_EQ(InfoMessage(directory / "p.tmp", content).empty(), whole) << length;
    }
  }
}

TEST(ReadPathInfoFile, RefusesEachWrongFieldAndNamesItsByte) {
  const ScratchDirectory directory;
  const std::string path = directory / "p.tmp";
  const auto with = [](std::string content, std::size_t offset, auto value) {
    std::memcpy(content.data() + offset, &value, sizeof value);
    return content;
  };
  const std::string convex = ConvexInfo().Content();
  EXPECT_THAT(InfoMessage(path, with(convex, 0, std::int16_t{0})), HasSubstr("(byte 0)"));
  EXPECT_THAT(InfoMessage(path, with(convex, 0, std::int16_t{-1})), HasSubstr("path type is -1"));
  EXPECT_THAT(InfoMessage(path, with(convex, 123, std::int16_t{4})),
              HasSubstr("tool type is 4, none of 1, 2 and 3 (byte 123)"));
  const std::string custom = CustomInfo().Content();
  EXPECT_THAT(InfoMessage(path, with(custom, 125, std::int32_t{-1})), HasSubstr("(byte 125)"));
  EXPECT_THAT(InfoMessage(path, with(custom, 129, std::int32_t{-1})), HasSubstr("(byte 129)"));
  EXPECT_THAT(InfoMessage(path, with(with(custom, 125, std::int32_t{0}), 129, std::int32_t{0})),
              HasSubstr("no pieces"));
  EXPECT_THAT(InfoMessage(path, with(custom, 125, std::int32_t{2147483647})),
              HasSubstr("2147483647 announced"));
}

TEST(WritePathInfoFile, WritesEachToolTypeByteForByte) {
  const ScratchDirectory directory;
  formats::WritePathInfoFile(directory / "0.tmp", ConvexPath());
  formats::WritePathInfoFile(directory / "1.tmp", UndercutPath());
  formats::WritePathInfoFile(directory / "2.tmp", CustomPath());
  EXPECT_EQ(ReadContent(directory / "0.tmp"), ConvexInfo().Content());
  EXPECT_EQ(ReadContent(directory / "1.tmp"), UndercutInfo().Content());
  EXPECT_EQ(ReadContent(directory / "2.tmp"), CustomInfo().Content());
}

TEST(WritePathInfoFile, RefusesWhatTheFileCannotHold) {
  const ScratchDirectory directory;
  const auto message = [&](const PathRecord& record) {
    return MessageOf<FileError>([&] { formats::WritePathInfoFile(directory / "p.tmp", record); });
  };
  PathRecord record = ConvexPath();
  record.colour = 256;
  EXPECT_THAT(message(record), HasSubstr("colour 256 is not in 0..255"));
  record = ConvexPath();
  record.cuts.push_back(record.cuts[0]);
  EXPECT_THAT(message(record), HasSubstr("exactly one cut"));
  record = ConvexPath();
  record.cuts[0].coordinates.pop_back();
  EXPECT_THAT(message(record), HasSubstr("not complete"));
  EXPECT_FALSE(std::filesystem::exists(directory / "p.tmp"));
}

}  // namespace
