#include <cstdint>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <string_view>

#include "PathRecordSamples.h"
#include "formats/FileError.h"
#include "formats/PathInfoFile.h"
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

FileBuilder ConvexInfo() {
  FileBuilder bytes;
  bytes.Int16(1).Uint8(9);
  AddPlacement(bytes);
  bytes.Int16(1).Doubles({1.5, 2.5, 5, 45, 12, 0.5}).Doubles({1, 2, 3});
  return bytes;
}

FileBuilder UndercutInfo() {
  FileBuilder bytes;
  bytes.Int16(2).Uint8(200);
  AddPlacement(bytes);
  bytes.Int16(2)
      .Uint8(1)
      .Uint8(0)
      .Doubles({1, 2})
      .Doubles({3, 4, 5, 6, 7, 8})
      .Doubles({9, 10, 11, 12, 13, 14});
  bytes.Doubles({1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0});
  return bytes;
}

FileBuilder CustomInfo() {
  FileBuilder bytes;
  bytes.Int16(1).Uint8(3);
  AddPlacement(bytes);
  bytes.Int16(3).Int32(2).Int32(1);
  bytes.Uint8(1)
      .Uint8(0)
      .Int32(0)
      .Int32(2)
      .Doubles({1, 2, 3, 4})
      .Doubles({5, 6, 7, 8})
      .Uint8(0)
      .Uint8(1);
  bytes.Uint8(1).Int32(1).Doubles({9, 10, 11});
  bytes.Doubles({1, 2, 3, 4, 5, 6});
  return bytes;
}

std::string InfoMessage(const std::string& path, std::string_view content) {
  WriteWholeFile(path, content);
  return MessageOf<FileError>([&] { formats::ReadPathInfoFile(path); });
}

TEST(ReadPathInfoFile, TakesAConvexTool) {
  const TempDirectory directory;
  WriteWholeFile(directory / "p.tmp", ConvexInfo().Bytes());
  const PathRecord record = formats::ReadPathInfoFile(directory / "p.tmp");
  EXPECT_EQ(record.pathType, 1);
  EXPECT_EQ(record.colour, 9);
  ExpectPlaced(record);
  ExpectConvex(std::get<formats::ConvexTool>(record.tool), 1.5, 2.5, 5, 45, 12, 0.5);
  EXPECT_THAT(record.cuts.at(0).coordinates, ElementsAre(1, 2, 3));
}

TEST(ReadPathInfoFile, TakesAnUndercutToolOnAFiveAxisPath) {
  const TempDirectory directory;
  WriteWholeFile(directory / "p.tmp", UndercutInfo().Bytes());
  const PathRecord record = formats::ReadPathInfoFile(directory / "p.tmp");
  EXPECT_EQ(record.pathType, 2);
  EXPECT_EQ(record.colour, 200);
  ExpectPlaced(record);
  ExpectUndercut(record.tool);
  EXPECT_EQ(record.cuts.at(0).coordinates.size(), 12U);
}

TEST(ReadPathInfoFile, TakesACustomToolsParallelArrays) {
  const TempDirectory directory;
  WriteWholeFile(directory / "p.tmp", CustomInfo().Bytes());
  const PathRecord record = formats::ReadPathInfoFile(directory / "p.tmp");
  ExpectPlaced(record);
  ExpectCustom(record.tool);
  EXPECT_THAT(record.cuts.at(0).coordinates, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(ReadPathInfoFile, RefusesEveryLengthThatIsNotAWholeNumberOfPositions) {
  const TempDirectory directory;
  struct Case {
    std::string content;
    std::size_t position;
    std::size_t positions;
  };
  for (const Case& file : {Case{ConvexInfo().Bytes(), 24, 1}, Case{UndercutInfo().Bytes(), 48, 2},
                           Case{CustomInfo().Bytes(), 24, 2}}) {
    const std::size_t fixed = file.content.size() - file.position * file.positions;
    for (std::size_t length = 0; length <= file.content.size() + 1; ++length) {
      const bool whole = length > fixed && (length - fixed) % file.position == 0;
      const std::string content = (file.content + "x").substr(0, length);
      EXPECT_EQ(InfoMessage(directory / "p.tmp", content).empty(), whole) << length;
    }
  }
}

TEST(ReadPathInfoFile, RefusesEachWrongFieldAndNamesItsByte) {
  const TempDirectory directory;
  const std::string path = directory / "p.tmp";
  const auto with = [](std::string content, std::size_t offset, auto value) {
    std::memcpy(content.data() + offset, &value, sizeof value);
    return content;
  };
  const std::string convex = ConvexInfo().Bytes();
  EXPECT_THAT(InfoMessage(path, with(convex, 0, std::int16_t{0})), HasSubstr("(byte 0)"));
  EXPECT_THAT(InfoMessage(path, with(convex, 0, std::int16_t{-1})), HasSubstr("path type is -1"));
  EXPECT_THAT(InfoMessage(path, with(convex, 123, std::int16_t{4})),
              HasSubstr("tool type is 4, none of 1, 2 and 3 (byte 123)"));
  const std::string custom = CustomInfo().Bytes();
  EXPECT_THAT(InfoMessage(path, with(custom, 125, std::int32_t{-1})), HasSubstr("(byte 125)"));
  EXPECT_THAT(InfoMessage(path, with(custom, 129, std::int32_t{-1})), HasSubstr("(byte 129)"));
  EXPECT_THAT(InfoMessage(path, with(with(custom, 125, std::int32_t{0}), 129, std::int32_t{0})),
              HasSubstr("no pieces"));
  EXPECT_THAT(InfoMessage(path, with(custom, 125, std::int32_t{2147483647})),
              HasSubstr("2147483647 announced"));
}

TEST(WritePathInfoFile, WritesEachToolTypeByteForByte) {
  const TempDirectory directory;
  formats::WritePathInfoFile(directory / "0.tmp", ConvexPath());
  formats::WritePathInfoFile(directory / "1.tmp", UndercutPath());
  formats::WritePathInfoFile(directory / "2.tmp", CustomPath());
  EXPECT_EQ(ReadWholeFile(directory / "0.tmp"), ConvexInfo().Bytes());
  EXPECT_EQ(ReadWholeFile(directory / "1.tmp"), UndercutInfo().Bytes());
  EXPECT_EQ(ReadWholeFile(directory / "2.tmp"), CustomInfo().Bytes());
}

TEST(WritePathInfoFile, RefusesWhatTheFileCannotHold) {
  const TempDirectory directory;
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
