#include <gmock/gmock.h>
#include <limits>

#include "FileBuilder.h"
#include "PathRecordSamples.h"
#include "formats/FileError.h"
#include "formats/PathInfoFile.h"

namespace {

using formats::FileError;
using formats::PathRecord;
using testing::ElementsAre;
using testing::HasSubstr;

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
