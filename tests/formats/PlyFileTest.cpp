#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "formats/FileError.h"
#include "formats/meshes/PlyFile.h"
#include "support/FileBuilder.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::FileError;
using formats::Mesh;
using support::FileBuilder;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;

Mesh ReadContentAsPly(std::string_view content, std::uint8_t colour = 0) {
  const TempDirectory directory;
  WriteWholeFile(directory / "m.ply", content);
  return formats::ReadPly(directory / "m.ply", colour);
}

std::string MessageFor(std::string_view content) {
  return MessageOf<FileError>([&] { ReadContentAsPly(content); });
}

constexpr const char* asciiFile =
    "ply\r\nformat ascii 1.0\r\ncomment by hand\r\n\r\n"
    "element vertex 4\r\nproperty float x\r\nproperty float confidence\r\nproperty float y\r\n"
    "property float z\r\n"
    "element face 2\r\nproperty uchar red\r\nproperty uchar green\r\nproperty uchar blue\r\n"
    "property list uchar int vertex_indices\r\nend_header\r\n"
    "0 9 0 0\r\n1 9 0 0\r\n1 9 1 0\r\n0 9 1 0.5\r\n"
    "230 60 50 3 0 1 2\r\n60 170 70 4 0 1 2 3\r\n";

TEST(ReadPly, FindsPropertiesByNameAndMakesFansOfPolygons) {
  const Mesh mesh = ReadContentAsPly(asciiFile);
  ASSERT_EQ(mesh.vertices.size(), 4U);
  EXPECT_THAT(mesh.vertices[3], ElementsAre(0, 1, 0.5));
  ASSERT_EQ(mesh.facets.size(), 3U);
  EXPECT_THAT(mesh.facets[0].vertices, ElementsAre(0, 1, 2));
  EXPECT_EQ(mesh.facets[0].colour, 1);
  EXPECT_THAT(mesh.facets[1].vertices, ElementsAre(0, 1, 2));
  EXPECT_THAT(mesh.facets[2].vertices, ElementsAre(0, 2, 3));
  EXPECT_EQ(mesh.facets[2].colour, 2);
}

TEST(ReadPly, RefusesAsciiCutBeforeItsLastNumber) {
  const std::string whole = asciiFile;
  for (std::size_t length = 0; length < whole.size() - 3; ++length) {
    EXPECT_NE(MessageFor(whole.substr(0, length)), "") << length;
  }
}

// Another element between vertices and faces, unsigned 16-bit indices, no colours.
template <typename Add>
std::string BinaryFile(const std::string& format, Add add) {
  std::string content =
      "ply\nformat " + format +
      " 1.0\nelement vertex 3\nproperty double x\nproperty double y\nproperty short z\n"
      "element tag 2\nproperty list ushort uchar letters\nproperty int8 mark\n"
      "element face 1\nproperty list uint ushort vertex_index\nend_header\n";
  for (int i = 0; i < 3; ++i) {
    add(content, 1.5 * i);
    add(content, i == 1 ? 1.0 : 0.0);
    add(content, static_cast<std::int16_t>(-i));
  }
  add(content, std::uint16_t{2});
  content += "ab\x01";
  add(content, std::uint16_t{0});
  content += "\x02";
  add(content, std::uint32_t{3});
  for (int i = 0; i < 3; ++i) add(content, static_cast<std::uint16_t>(2 - i));
  return content;
}

template <typename T>
void AddLittle(std::string& content, T value) {
  const auto bytes = std::bit_cast<std::array<char, sizeof value>>(value);
  content.append(bytes.begin(), bytes.end());
}

template <typename T>
void AddBig(std::string& content, T value) {
  const auto bytes = std::bit_cast<std::array<char, sizeof value>>(value);
  content.append(bytes.rbegin(), bytes.rend());
}

void ExpectBinaryMesh(const Mesh& mesh, std::uint8_t colour) {
  ASSERT_EQ(mesh.vertices.size(), 3U);
  EXPECT_THAT(mesh.vertices[1], ElementsAre(1.5, 1, -1));
  EXPECT_THAT(mesh.vertices[2], ElementsAre(3, 0, -2));
  ASSERT_EQ(mesh.facets.size(), 1U);
  EXPECT_THAT(mesh.facets[0].vertices, ElementsAre(2, 1, 0));
  EXPECT_EQ(mesh.facets[0].colour, colour);
}

TEST(ReadPly, ReadsBothByteOrdersAndPassesOtherElementsOver) {
  const auto little = [](std::string& s, auto v) { AddLittle(s, v); };
  const auto big = [](std::string& s, auto v) { AddBig(s, v); };
  ExpectBinaryMesh(ReadContentAsPly(BinaryFile("binary_little_endian", little), 17), 17);
  ExpectBinaryMesh(ReadContentAsPly(BinaryFile("binary_big_endian", big), 5), 5);
}

TEST(ReadPly, RefusesEveryTruncatedBinaryLength) {
  const auto little = [](std::string& s, auto v) { AddLittle(s, v); };
  const std::string whole = BinaryFile("binary_little_endian", little);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_NE(MessageFor(whole.substr(0, length)), "") << length;
  }
}

std::string WithHeader(const std::string& header, const std::string& body = "") {
  return "ply\nformat ascii 1.0\n" + header + "end_header\n" + body;
}

TEST(ReadPly, RefusesCountsTheFileCannotHold) {
  EXPECT_THAT(MessageFor(WithHeader("element vertex 4000000000\nproperty float x\n"
                                    "property float y\nproperty float z\n",
                                    "0 0 0\n")),
              HasSubstr("ends within its vertex"));
  EXPECT_THAT(MessageFor("ply\nformat binary_little_endian 1.0\nelement vertex "
                         "18446744073709551615\nproperty double x\nend_header\n"),
              HasSubstr("18446744073709551615 announced, room for 0"));
  EXPECT_THAT(MessageFor("ply\nformat binary_little_endian 1.0\nelement face 1\n"
                         "property list uint int vertex_index\nend_header\n\xff\xff\xff\xff"),
              HasSubstr("4294967295 announced, room for 0"));
  // No room is needed for what has no properties.
  EXPECT_EQ(MessageFor(WithHeader("element nothing 18446744073709551615\n")), "");
}

TEST(ReadPly, RefusesWrongHeaders) {
  EXPECT_THAT(MessageFor("ply2\n"), HasSubstr("does not begin with \"ply\" (line 1)"));
  EXPECT_THAT(MessageFor("ply\nend_header\n"), HasSubstr("names no format"));
  EXPECT_THAT(MessageFor("ply\nformat utf8 1.0\n"), HasSubstr("format is not known (line 2)"));
  EXPECT_THAT(MessageFor(WithHeader("property int x\n")), HasSubstr("ahead of every element"));
  EXPECT_THAT(MessageFor(WithHeader("element vertex -1\n")), HasSubstr("no whole number"));
  EXPECT_THAT(MessageFor(WithHeader("element vertex 1\nproperty quad x\n")),
              HasSubstr("type is not known (line 4)"));
  EXPECT_THAT(MessageFor(WithHeader("element face 1\nproperty list float int vertex_index\n")),
              HasSubstr("list's count is no whole number"));
  EXPECT_THAT(MessageFor(WithHeader("elephant\n")), HasSubstr("not known"));
  EXPECT_THAT(MessageFor("ply\n" + std::string(100000, 'x')), HasSubstr("does not end"));
}

TEST(ReadPly, RefusesElementsWithoutWhatAMeshNeeds) {
  EXPECT_THAT(MessageFor(WithHeader("element vertex 1\nproperty float x\n", "1\n")),
              HasSubstr("lack x, y or z"));
  EXPECT_THAT(MessageFor(WithHeader("element face 1\nproperty int red\n", "1\n")),
              HasSubstr("lack vertex_indices"));
}

TEST(ReadPly, RefusesWrongFaces) {
  const std::string header =
      "element vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
      "element face 1\nproperty list int int vertex_index\nproperty int red\n"
      "property int green\nproperty int blue\n";
  const auto message = [&](const std::string& face) {
    return MessageFor(WithHeader(header, "0 0 0\n1 0 0\n0 1 0\n" + face + "\n"));
  };
  EXPECT_EQ(message("3 0 1 2 0 0 0"), "");
  EXPECT_THAT(message("2 0 1 0 0 0"), HasSubstr("2 corners, fewer than 3 (line 16)"));
  EXPECT_THAT(message("3 0 1 3 0 0 0"), HasSubstr("none of the file's 3"));
  EXPECT_THAT(message("3 0 1 -1 0 0 0"), HasSubstr("none of the file's 3"));
  EXPECT_THAT(message("-3 0 1 2 0 0 0"), HasSubstr("count is out of range"));
  EXPECT_THAT(message("3 0 1 1.5 0 0 0"), HasSubstr("whole number"));
  EXPECT_THAT(message("3 0 1 2 0 0 256"), HasSubstr("colour is out of range"));
  EXPECT_THAT(message("3 0 1 2 0 0"), HasSubstr("the line ends"));
}

Mesh TwoFacets() {
  return {{{0, 0, 0}, {0.1, 0, 0}, {0, 1e-300, 0}}, {{{0, 1, 2}, 1}, {{2, 1, 0}, 2}}};
}

constexpr const char* properties =
    "element vertex 3\nproperty double x\nproperty double y\nproperty double z\n"
    "element face 2\nproperty list uchar int vertex_indices\n"
    "property uchar red\nproperty uchar green\nproperty uchar blue\nend_header\n";

TEST(WritePlyBinary, WritesTheFormatByteForByte) {
  const TempDirectory directory;
  formats::WritePlyBinary(directory / "m.ply", TwoFacets());
  FileBuilder expected;
  expected.Text("ply\nformat binary_little_endian 1.0\n").Text(properties);
  expected.Doubles({0, 0, 0}).Doubles({0.1, 0, 0}).Doubles({0, 1e-300, 0});
  expected.Uint8(3).Int32(0).Int32(1).Int32(2).Uint8(230).Uint8(60).Uint8(50);
  expected.Uint8(3).Int32(2).Int32(1).Int32(0).Uint8(60).Uint8(170).Uint8(70);
  EXPECT_EQ(ReadWholeFile(directory / "m.ply"), expected.Bytes());
}

TEST(WritePlyAscii, WritesTheFormatLineByLine) {
  const TempDirectory directory;
  formats::WritePlyAscii(directory / "m.ply", TwoFacets());
  EXPECT_EQ(ReadWholeFile(directory / "m.ply"), std::string("ply\nformat ascii 1.0\n") +
                                                    properties +
                                                    "0 0 0\n0.1 0 0\n0 1e-300 0\n"
                                                    "3 0 1 2 230 60 50\n3 2 1 0 60 170 70\n");
}

}  // namespace
