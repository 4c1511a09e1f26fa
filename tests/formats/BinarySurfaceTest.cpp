#include <cmath>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <string_view>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "support/FileBuilder.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::FileError;
using support::FileBuilder;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::HasSubstr;

// Four vertices, two facets of colours 7 and 255.
FileBuilder TwoFacets() {
  FileBuilder bytes;
  bytes.Text("binary surface").Int32(4).Int32(2);
  bytes.Doubles({0, 0, 0}).Doubles({1.5, 0, 0}).Doubles({1.5, 2.25, 0}).Doubles({0, 2.25, -1e300});
  bytes.Int32(1).Int32(2).Int32(3).Uint8(7);
  bytes.Int32(1).Int32(3).Int32(4).Uint8(255);
  return bytes;
}

formats::Mesh TwoFacetsMesh() {
  return {{{0, 0, 0}, {1.5, 0, 0}, {1.5, 2.25, 0}, {0, 2.25, -1e300}},
          {{{0, 1, 2}, 7}, {{0, 2, 3}, 255}}};
}

std::string ReadMessage(const std::string& path, std::string_view content) {
  WriteWholeFile(path, content);
  return MessageOf<FileError>([&] { formats::ReadBinarySurface(path); });
}

TEST(ReadBinarySurface, TakesVerticesAndZeroBasedFacets) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.iff", TwoFacets().Bytes());
  const formats::Mesh mesh = formats::ReadBinarySurface(directory / "a.iff");
  EXPECT_EQ(mesh.vertices, TwoFacetsMesh().vertices);
  ASSERT_EQ(mesh.facets.size(), 2U);
  EXPECT_THAT(mesh.facets[0].vertices, testing::ElementsAre(0, 1, 2));
  EXPECT_EQ(mesh.facets[0].colour, 7);
  EXPECT_THAT(mesh.facets[1].vertices, testing::ElementsAre(0, 2, 3));
  EXPECT_EQ(mesh.facets[1].colour, 255);
}

TEST(ReadBinarySurface, RefusesEveryTruncatedLengthAndNamesTheByte) {
  const TempDirectory directory;
  const std::string whole = TwoFacets().Bytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string message = ReadMessage(directory / "cut.iff", whole.substr(0, length));
    EXPECT_THAT(message, HasSubstr("cut.iff: the file ends within the ")) << length;
    EXPECT_THAT(message, HasSubstr(" (byte ")) << length;
  }
}

TEST(ReadBinarySurface, LooksAtNothingBehindTheLastFacet) {
  const TempDirectory directory;
  WriteWholeFile(directory / "long.iff", TwoFacets().Text("x").Bytes());
  EXPECT_EQ(formats::ReadBinarySurface(directory / "long.iff").facets.size(), 2U);
}

TEST(ReadBinarySurface, TakesAnEmptySurface) {
  const TempDirectory directory;
  WriteWholeFile(directory / "empty.iff",
                 FileBuilder().Text("binary surface").Int32(0).Int32(0).Bytes());
  const formats::Mesh mesh = formats::ReadBinarySurface(directory / "empty.iff");
  EXPECT_TRUE(mesh.vertices.empty());
  EXPECT_TRUE(mesh.facets.empty());
}

TEST(ReadBinarySurface, PassesNonFiniteCoordinatesOn) {
  const TempDirectory directory;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  FileBuilder bytes;
  bytes.Text("binary surface").Int32(1).Int32(0).Doubles({nan, inf, -inf});
  WriteWholeFile(directory / "nan.iff", bytes.Bytes());
  const formats::Mesh mesh = formats::ReadBinarySurface(directory / "nan.iff");
  ASSERT_EQ(mesh.vertices.size(), 1U);
  EXPECT_TRUE(std::isnan(mesh.vertices[0][0]));
  EXPECT_EQ(mesh.vertices[0][1], inf);
  EXPECT_EQ(mesh.vertices[0][2], -inf);
}

TEST(ReadBinarySurface, RefusesAnotherHeader) {
  const TempDirectory directory;
  std::string content = TwoFacets().Bytes();
  content[13] = 'E';
  EXPECT_THAT(ReadMessage(directory / "a.iff", content), HasSubstr("header"));
}

TEST(ReadBinarySurface, RefusesNegativeCounts) {
  const TempDirectory directory;
  const std::string path = directory / "a.iff";
  EXPECT_THAT(ReadMessage(path, FileBuilder().Text("binary surface").Int32(-1).Int32(0).Bytes()),
              HasSubstr("the vertex count is negative (byte 14)"));
  EXPECT_THAT(ReadMessage(path, FileBuilder().Text("binary surface").Int32(0).Int32(-2).Bytes()),
              HasSubstr("the facet count is negative (byte 18)"));
}

TEST(ReadBinarySurface, RefusesCountsTheFileCannotHoldBeforeAllocating) {
  const TempDirectory directory;
  const std::string path = directory / "a.iff";
  const int huge = std::numeric_limits<std::int32_t>::max();
  EXPECT_THAT(ReadMessage(path, FileBuilder().Text("binary surface").Int32(huge).Int32(1).Bytes()),
              HasSubstr("2147483647 announced, room for 0 (byte 22)"));
  EXPECT_THAT(ReadMessage(path, FileBuilder().Text("binary surface").Int32(0).Int32(huge).Bytes()),
              HasSubstr("2147483647 announced, room for 0 (byte 22)"));
}

TEST(ReadBinarySurface, RefusesVertexNumbersOutsideTheFile) {
  const TempDirectory directory;
  const std::string path = directory / "a.iff";
  for (const int number : {0, -1, 2, std::numeric_limits<std::int32_t>::min()}) {
    FileBuilder bytes;
    bytes.Text("binary surface")
        .Int32(1)
        .Int32(1)
        .Doubles({0, 0, 0})
        .Int32(1)
        .Int32(number)
        .Int32(1)
        .Uint8(0);
    EXPECT_THAT(ReadMessage(path, bytes.Bytes()),
                HasSubstr("vertex number " + std::to_string(number) + " is not in 1..1 (byte 50)"));
  }
}

TEST(ReadBinarySurface, NamesAMissingFileAndADirectory) {
  const TempDirectory directory;
  const auto missing = [&] { formats::ReadBinarySurface(directory / "none.iff"); };
  EXPECT_THAT(MessageOf<FileError>(missing), HasSubstr("none.iff: cannot be opened"));
  const auto folder = [&] { formats::ReadBinarySurface(directory / "."); };
  EXPECT_THAT(MessageOf<FileError>(folder), HasSubstr("is a directory"));
}

TEST(ReadBinarySurface, UnderstandsBothSeparators) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.iff", TwoFacets().Bytes());
  std::string path = directory / "a.iff";
  for (char& c : path) {
    if (c == '/') c = '\\';
  }
  EXPECT_EQ(formats::ReadBinarySurface(path).facets.size(), 2U);
}

TEST(WriteBinarySurface, WritesTheFormatByteForByte) {
  const TempDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", TwoFacetsMesh());
  EXPECT_EQ(ReadWholeFile(directory / "a.iff"), TwoFacets().Bytes());
}

TEST(WriteBinarySurface, WritesAnEmptySurfaceOf22Bytes) {
  const TempDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", {});
  EXPECT_EQ(ReadWholeFile(directory / "a.iff"),
            FileBuilder().Text("binary surface").Int32(0).Int32(0).Bytes());
}

TEST(WriteBinarySurface, KeepsTheOrderAcrossManyBlocks) {
  const TempDirectory directory;
  formats::Mesh mesh;
  FileBuilder expected;
  const int count = 30000;
  expected.Text("binary surface").Int32(count).Int32(count);
  for (int i = 0; i < count; ++i) {
    mesh.vertices.push_back({1.0 * i, 0.5 * i, -2.0 * i});
    expected.Doubles({1.0 * i, 0.5 * i, -2.0 * i});
  }
  for (int i = 0; i < count; ++i) {
    mesh.facets.push_back({{i, (i + 1) % count, 0}, static_cast<std::uint8_t>(i % 256)});
    expected.Int32(i + 1).Int32((i + 1) % count + 1).Int32(1).Uint8(static_cast<unsigned>(i % 256));
  }
  formats::WriteBinarySurface(directory / "a.iff", mesh);
  EXPECT_TRUE(ReadWholeFile(directory / "a.iff") == expected.Bytes());
  EXPECT_TRUE(formats::ReadBinarySurface(directory / "a.iff").vertices == mesh.vertices);
}

TEST(WriteBinarySurface, RefusesFacetsOfVerticesTheMeshLacks) {
  const TempDirectory directory;
  const formats::Mesh mesh{{{0, 0, 0}}, {{{0, 1, 0}, 0}}};
  const auto write = [&] { formats::WriteBinarySurface(directory / "a.iff", mesh); };
  EXPECT_THAT(MessageOf<FileError>(write), HasSubstr("a facet names vertex 1 of 1"));
}

TEST(WriteBinarySurface, NamesAPlaceThatCannotBeWritten) {
  const TempDirectory directory;
  const auto write = [&] { formats::WriteBinarySurface(directory / "none/a.iff", {}); };
  EXPECT_THAT(MessageOf<FileError>(write), HasSubstr("cannot be written"));
}

}  // namespace
