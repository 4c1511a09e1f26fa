#include <cmath>
#include <gmock/gmock.h>
#include <limits>

#include "FileBuilder.h"
#include "formats/BinarySurface.h"
#include "formats/FileError.h"

namespace {

using formats::FileError;
using testing::HasSubstr;

// Four vertices, two facets of colours 7 and 255.
Bytes TwoFacets() {
  Bytes bytes;
  bytes.Text("binary surface").I32(4).I32(2);
  bytes.F64(0, 0, 0).F64(1.5, 0, 0).F64(1.5, 2.25, 0).F64(0, 2.25, -1e300);
  bytes.I32(1).I32(2).I32(3).U8(7);
  bytes.I32(1).I32(3).I32(4).U8(255);
  return bytes;
}

formats::Mesh TwoFacetsMesh() {
  return {{{0, 0, 0}, {1.5, 0, 0}, {1.5, 2.25, 0}, {0, 2.25, -1e300}},
          {{{0, 1, 2}, 7}, {{0, 2, 3}, 255}}};
}

std::string ReadMessage(const std::string& path, std::string_view content) {
  WriteContent(path, content);
  return MessageOf<FileError>([&] { formats::ReadBinarySurface(path); });
}

TEST(ReadBinarySurface, TakesVerticesAndZeroBasedFacets) {
  const ScratchDirectory directory;
  WriteContent(directory / "a.iff", TwoFacets().Content());
  const formats::Mesh mesh = formats::ReadBinarySurface(directory / "a.iff");
  EXPECT_EQ(mesh.vertices, TwoFacetsMesh().vertices);
  ASSERT_EQ(mesh.facets.size(), 2U);
  EXPECT_THAT(mesh.facets[0].vertices, testing::ElementsAre(0, 1, 2));
  EXPECT_EQ(mesh.facets[0].colour, 7);
  EXPECT_THAT(mesh.facets[1].vertices, testing::ElementsAre(0, 2, 3));
  EXPECT_EQ(mesh.facets[1].colour, 255);
}

TEST(ReadBinarySurface, RefusesEveryTruncatedLengthAndNamesTheByte) {
  const ScratchDirectory directory;
  const std::string whole = TwoFacets().Content();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string message = ReadMessage(directory / "cut.iff", whole.substr(0, length));
    EXPECT_THAT(message, HasSubstr("cut.iff: the file ends within the ")) << length;
    EXPECT_THAT(message, HasSubstr(" (byte ")) << length;
  }
}

TEST(ReadBinarySurface, LooksAtNothingBehindTheLastFacet) {
  const ScratchDirectory directory;
  WriteContent(directory / "long.iff", TwoFacets().Text("x").Content());
  EXPECT_EQ(formats::ReadBinarySurface(directory / "long.iff").facets.size(), 2U);
}

TEST(ReadBinarySurface, TakesAnEmptySurface) {
  const ScratchDirectory directory;
  WriteContent(directory / "empty.iff", Bytes().Text("binary surface").I32(0).I32(0).Content());
  const formats::Mesh mesh = formats::ReadBinarySurface(directory / "empty.iff");
  EXPECT_TRUE(mesh.vertices.empty());
  EXPECT_TRUE(mesh.facets.empty());
}

TEST(ReadBinarySurface, PassesNonFiniteCoordinatesOn) {
  const ScratchDirectory directory;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  Bytes bytes;
  bytes.Text("binary surface").I32(1).I32(0).F64(nan, inf, -inf);
  WriteContent(directory / "nan.iff", bytes.Content());
  const formats::Mesh mesh = formats::ReadBinarySurface(directory / "nan.iff");
  ASSERT_EQ(mesh.vertices.size(), 1U);
  EXPECT_TRUE(std::isnan(mesh.vertices[0][0]));
  EXPECT_EQ(mesh.vertices[0][1], inf);
  EXPECT_EQ(mesh.vertices[0][2], -inf);
}

TEST(ReadBinarySurface, RefusesAnotherHeader) {
  const ScratchDirectory directory;
  std::string content = TwoFacets().Content();
  content[13] = 'E';
  EXPECT_THAT(ReadMessage(directory / "a.iff", content), HasSubstr("header"));
}

TEST(ReadBinarySurface, RefusesNegativeCounts) {
  const ScratchDirectory directory;
  const std::string path = directory / "a.iff";
  EXPECT_THAT(ReadMessage(path, Bytes().Text("binary surface").I32(-1).I32(0).Content()),
              HasSubstr("the vertex count is negative (byte 14)"));
  EXPECT_THAT(ReadMessage(path, Bytes().Text("binary surface").I32(0).I32(-2).Content()),
              HasSubstr("the facet count is negative (byte 18)"));
}

TEST(ReadBinarySurface, RefusesCountsTheFileCannotHoldBeforeAllocating) {
  const ScratchDirectory directory;
  const std::string path = directory / "a.iff";
  const int huge = std::numeric_limits<std::int32_t>::max();
  EXPECT_THAT(ReadMessage(path, Bytes().Text("binary surface").I32(huge).I32(1).Content()),
              HasSubstr("2147483647 announced, room for 0 (byte 22)"));
  EXPECT_THAT(ReadMessage(path, Bytes().Text("binary surface").I32(0).I32(huge).Content()),
              HasSubstr("2147483647 announced, room for 0 (byte 22)"));
}

TEST(ReadBinarySurface, RefusesVertexNumbersOutsideTheFile) {
  const ScratchDirectory directory;
  const std::string path = directory / "a.iff";
  for (const int number : {0, -1, 2, std::numeric_limits<std::int32_t>::min()}) {
    Bytes bytes;
    bytes.Text("binary surface").I32(1).I32(1).F64(0, 0, 0).I32(1).I32(number).I32(1).U8(0);
    EXPECT_THAT(ReadMessage(path, bytes.Content()),
                HasSubstr("vertex number " + std::to_string(number) + " is not in 1..1 (byte 50)"));
  }
}

TEST(ReadBinarySurface, NamesAMissingFileAndADirectory) {
  const ScratchDirectory directory;
  const auto missing = [&] { formats::ReadBinarySurface(directory / "none.iff"); };
  EXPECT_THAT(MessageOf<FileError>(missing), HasSubstr("none.iff: cannot be opened"));
  const auto folder = [&] { formats::ReadBinarySurface(directory / "."); };
  EXPECT_THAT(MessageOf<FileError>(folder), HasSubstr("is a directory"));
}

TEST(ReadBinarySurface, UnderstandsBothSeparators) {
  const ScratchDirectory directory;
  WriteContent(directory / "a.iff", TwoFacets().Content());
  std::string path = directory / "a.iff";
  for (char& c : path) {
    if (c == '/') c = '\\';
  }
  EXPECT_EQ(formats::ReadBinarySurface(path).facets.size(), 2U);
}

TEST(WriteBinarySurface, WritesTheFormatByteForByte) {
  const ScratchDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", TwoFacetsMesh());
  EXPECT_EQ(ReadContent(directory / "a.iff"), TwoFacets().Content());
}

TEST(WriteBinarySurface, WritesAnEmptySurfaceOf22Bytes) {
  const ScratchDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", {});
  EXPECT_EQ(ReadContent(directory / "a.iff"),
            Bytes().Text("binary surface").I32(0).I32(0).Content());
}

TEST(WriteBinarySurface, KeepsTheOrderAcrossManyBlocks) {
  const ScratchDirectory directory;
  formats::Mesh mesh;
  Bytes expected;
  const int count = 30000;
  expected.Text("binary surface").I32(count).I32(count);
  for (int i = 0; i < count; ++i) {
    mesh.vertices.push_back({1.0 * i, 0.5 * i, -2.0 * i});
    expected.F64(1.0 * i, 0.5 * i, -2.0 * i);
  }
  for (int i = 0; i < count; ++i) {
    mesh.facets.push_back({{i, (i + 1) % count, 0}, static_cast<std::uint8_t>(i % 256)});
    expected.I32(i + 1).I32((i + 1) % count + 1).I32(1).U8(i % 256);
  }
  formats::WriteBinarySurface(directory / "a.iff", mesh);
  EXPECT_TRUE(ReadContent(directory / "a.iff") == expected.Content());
  EXPECT_TRUE(formats::ReadBinarySurface(directory / "a.iff").vertices == mesh.vertices);
}

TEST(WriteBinarySurface, RefusesFacetsOfVerticesTheMeshLacks) {
  const ScratchDirectory directory;
  const formats::Mesh mesh{{{0, 0, 0}}, {{{0, 1, 0}, 0}}};
  const auto write = [&] { formats::WriteBinarySurface(directory / "a.iff", mesh); };
  EXPECT_THAT(MessageOf<FileError>(write), HasSubstr("a facet names vertex 1 of 1"));
}

TEST(WriteBinarySurface, NamesAPlaceThatCannotBeWritten) {
  const ScratchDirectory directory;
  const auto write = [&] { formats::WriteBinarySurface(directory / "none/a.iff", {}); };
  EXPECT_THAT(MessageOf<FileError>(write), HasSubstr("cannot be written"));
}

}  // namespace
