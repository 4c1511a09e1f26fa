#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <string_view>

#include "formats/FileError.h"
#include "formats/meshes/StlFile.h"
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

// Two facets that share an edge; the attribute of the second is set.
FileBuilder TwoFacets(std::string header) {
  header.resize(80, '\0');
  FileBuilder bytes;
  bytes.Text(header).Uint32(2);
  bytes.Floats({0, 0, 1}).Floats({0, 0, 0}).Floats({1, 0, 0}).Floats({0, 1, 0}).Uint16(0);
  bytes.Floats({9, 9, 9}).Floats({1, 0, 0}).Floats({1, 1, 0.5}).Floats({0, 1, 0}).Uint16(0x8123);
  return bytes;
}

constexpr const char* asciiFile =
    "solid a name of four words\n"
    "facet normal 0 0 1\n outer loop\n  vertex 0 0 0\n  vertex 1 0 0\n  vertex 0 1 0\n"
    " endloop\nendfacet\n"
    "FACET NORMAL 0 0 1 OUTER LOOP VERTEX 1.0e0 +0 0 VERTEX 1 1 .5 VERTEX 0 1 0 ENDLOOP ENDFACET\n"
    "endsolid a name of four words\n";

void ExpectTwoFacets(const Mesh& mesh, std::uint8_t colour) {
  ASSERT_EQ(mesh.vertices.size(), 4U);
  EXPECT_THAT(mesh.vertices[0], ElementsAre(0, 0, 0));
  EXPECT_THAT(mesh.vertices[1], ElementsAre(1, 0, 0));
  EXPECT_THAT(mesh.vertices[2], ElementsAre(0, 1, 0));
  EXPECT_THAT(mesh.vertices[3], ElementsAre(1, 1, 0.5));
  ASSERT_EQ(mesh.facets.size(), 2U);
  EXPECT_THAT(mesh.facets[0].vertices, ElementsAre(0, 1, 2));
  EXPECT_THAT(mesh.facets[1].vertices, ElementsAre(1, 3, 2));
  EXPECT_EQ(mesh.facets[0].colour, colour);
  EXPECT_EQ(mesh.facets[1].colour, colour);
}

Mesh ReadContentAsStl(std::string_view content, std::uint8_t colour = 0) {
  const TempDirectory directory;
  WriteWholeFile(directory / "m.stl", content);
  return formats::ReadStl(directory / "m.stl", colour);
}

std::string MessageFor(std::string_view content) {
  return MessageOf<FileError>([&] { ReadContentAsStl(content); });
}

TEST(ReadStl, JoinsTheCornersOfABinaryFile) {
  ExpectTwoFacets(ReadContentAsStl(TwoFacets("made by hand").Bytes(), 42), 42);
}

TEST(ReadStl, GoesByTheSizeWhenABinaryHeaderBeginsWithSolid) {
  ExpectTwoFacets(ReadContentAsStl(TwoFacets("solid\nfacet normal").Bytes()), 0);
}

TEST(ReadStl, ReadsAscii) { ExpectTwoFacets(ReadContentAsStl(asciiFile, 3), 3); }

TEST(ReadStl, ReadsAsciiWithTheOtherLineEnds) {
  std::string content;
  for (const char* c = asciiFile; *c != 0; ++c) {
    if (*c == '\n') content += '\r';
    content += *c;
  }
  ExpectTwoFacets(ReadContentAsStl(content), 0);
}

TEST(ReadStl, TakesAllSolidsOfAFile) {
  const std::string twice = std::string(asciiFile) + asciiFile;
  const Mesh mesh = ReadContentAsStl(twice);
  EXPECT_EQ(mesh.facets.size(), 4U);
  EXPECT_EQ(mesh.vertices.size(), 4U);
}

TEST(ReadStl, RefusesABinaryFileOfEveryOtherLength) {
  const std::string whole = TwoFacets("made by hand").Bytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(MessageFor(whole.substr(0, length)), HasSubstr("neither an ASCII nor a binary STL"))
        << length;
  }
  EXPECT_THAT(MessageFor(whole + "x"),
              HasSubstr("2 facets would make it 184 bytes long, it has 185 (byte 80)"));
}

TEST(ReadStl, RefusesAsciiCutAnywhereBeforeItsEnd) {
  const std::string whole = asciiFile;
  const std::size_t end = whole.rfind("endsolid") + std::string("endsolid").size();
  for (std::size_t length = 0; length < end; ++length) {
    EXPECT_NE(MessageFor(whole.substr(0, length)), "") << length;
  }
}

TEST(ReadStl, NamesTheLineOfAWrongWord) {
  std::string content = asciiFile;
  content.replace(content.find("vertex 1 0"), 6, "vertix");
  EXPECT_THAT(MessageFor(content), HasSubstr("m.stl: no \"vertex\" here (line 5)"));
  content = asciiFile;
  content.replace(content.find("0 1 0\n"), 5, "0 1,5");
  EXPECT_THAT(MessageFor(content), HasSubstr("\"1,5\" is no number for a coordinate (line 6)"));
}

TEST(ReadStl, TakesAHugeFacetCountForNoBinaryFile) {
  std::string content = TwoFacets("x").Bytes();
  content.replace(80, 4, "\xff\xff\xff\xff");
  EXPECT_THAT(MessageFor(content), HasSubstr("4294967295 facets would make it 214748364834 bytes"));
}

// A facet in the plane x = 2, seen from +x, and one without area.
Mesh TwoToWrite() { return {{{2, 0, 0}, {2, 4, 0}, {2, 0, 4}}, {{{0, 1, 2}, 7}, {{0, 1, 1}, 9}}}; }

TEST(WriteStlBinary, WritesTheFormatByteForByte) {
  const TempDirectory directory;
  formats::WriteStlBinary(directory / "m.stl", TwoToWrite());
  std::string header = "binary STL";
  header.resize(80, ' ');
  FileBuilder expected;
  expected.Text(header).Uint32(2);
  expected.Floats({1, 0, 0}).Floats({2, 0, 0}).Floats({2, 4, 0}).Floats({2, 0, 4}).Uint16(0);
  expected.Floats({0, 0, 0}).Floats({2, 0, 0}).Floats({2, 4, 0}).Floats({2, 4, 0}).Uint16(0);
  EXPECT_EQ(ReadWholeFile(directory / "m.stl"), expected.Bytes());
}

TEST(WriteStlBinary, RefusesACoordinateThatSinglePrecisionCannotHold) {
  const TempDirectory directory;
  Mesh mesh = TwoToWrite();
  mesh.vertices[1][2] = -1e39;
  const auto write = [&] { formats::WriteStlBinary(directory / "m.stl", mesh); };
  EXPECT_THAT(MessageOf<FileError>(write), HasSubstr("too large for a binary STL file"));
}

TEST(WriteStlAscii, WritesTheShortestDigitsThatReadBack) {
  const TempDirectory directory;
  Mesh mesh = TwoToWrite();
  mesh.facets.pop_back();
  mesh.vertices[1][1] = 0.1;
  formats::WriteStlAscii(directory / "m.stl", mesh);
  EXPECT_EQ(ReadWholeFile(directory / "m.stl"),
            "solid mesh\n"
            "  facet normal 1 0 0\n"
            "    outer loop\n"
            "      vertex 2 0 0\n"
            "      vertex 2 0.1 0\n"
            "      vertex 2 0 4\n"
            "    endloop\n"
            "  endfacet\n"
            "endsolid mesh\n");
}

}  // namespace
