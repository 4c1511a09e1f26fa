#include <cstdint>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "formats/FileError.h"
#include "formats/meshes/ObjFile.h"
#include "formats/meshes/OffFile.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::FileError;
using formats::Mesh;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;

template <typename Read>
Mesh ReadWith(Read read, std::string_view content, std::uint8_t colour = 0) {
  const TempDirectory directory;
  WriteWholeFile(directory / "m.txt", content);
  return read(directory / "m.txt", colour);
}

template <typename Read>
std::string MessageFor(Read read, std::string_view content) {
  return MessageOf<FileError>([&] { ReadWith(read, content); });
}

TEST(ReadObj, TakesVerticesFacesAndOurMaterials) {
  const Mesh mesh = ReadWith(formats::ReadObj,
                             "# comment\nmtllib a.mtl\nv 0 0 0\nv 1 0 0 1.0\nv 1 1 0 0.5 0.5 0.5\n"
                             "v 0 1 0.25\nvn 0 0 1\nvt 0 0\ng one\ns off\n"
                             "f 1/1/1 2//1 3/1\n"
                             "usemtl colour_9\nf 1 2 3 4 # a square\nusemtl steel\nf -4 -3 -1\n",
                             6);
  ASSERT_EQ(mesh.vertices.size(), 4U);
  EXPECT_THAT(mesh.vertices[2], ElementsAre(1, 1, 0));
  EXPECT_THAT(mesh.vertices[3], ElementsAre(0, 1, 0.25));
  ASSERT_EQ(mesh.facets.size(), 4U);
  EXPECT_EQ(mesh.facets[0].colour, 6);
  EXPECT_THAT(mesh.facets[2].vertices, ElementsAre(0, 2, 3));
  EXPECT_EQ(mesh.facets[2].colour, 9);
  EXPECT_THAT(mesh.facets[3].vertices, ElementsAre(0, 1, 3));
  EXPECT_EQ(mesh.facets[3].colour, 9);
}

TEST(ReadObj, RefusesWrongStatementsAndNamesTheLine) {
  const auto message = [](const char* text) { return MessageFor(formats::ReadObj, text); };
  EXPECT_THAT(message("v 0 0\n"), HasSubstr("a coordinate should stand (line 1)"));
  EXPECT_THAT(message("\nv 0 0 x\n"), HasSubstr("\"x\" is no number for a coordinate (line 2)"));
  EXPECT_THAT(message("v 0 0 0\nf 1 1\n"), HasSubstr("2 corners, fewer than 3 (line 2)"));
  EXPECT_THAT(message("v 0 0 0\nf 1 1 2\n"), HasSubstr("none of the file's 1"));
  EXPECT_THAT(message("v 0 0 0\nf 1 1 0\n"), HasSubstr("none of the file's 1"));
  EXPECT_THAT(message("v 0 0 0\nf 1 1 -2\n"), HasSubstr("none of the file's 1"));
  EXPECT_THAT(message("v 0 0 0\nf 1 1 1.5\n"), HasSubstr("no whole number"));
  EXPECT_THAT(message("v 0 0 0\nf 1 1 99999999999999999999\n"), HasSubstr("no whole number"));
  EXPECT_THAT(message("usemtl colour_256\n"), HasSubstr("not in 0..255"));
  EXPECT_THAT(message("hello\n"), HasSubstr("neither vertices nor faces"));
  EXPECT_THAT(message(""), HasSubstr("neither vertices nor faces"));
}

Mesh ThreeFacets() {
  return {{{0, 0, 0}, {0.1, 0, 0}, {0, -1e30, 0}},
          {{{0, 1, 2}, 1}, {{2, 1, 0}, 1}, {{0, 2, 1}, 0}}};
}

TEST(WriteObj, NamesAMaterialWhereverTheColourChanges) {
  const TempDirectory directory;
  formats::WriteObj(directory / "m.obj", ThreeFacets());
  EXPECT_EQ(ReadWholeFile(directory / "m.obj"),
            "# 3 vertices, 3 facets\nv 0 0 0\nv 0.1 0 0\nv 0 -1e+30 0\n"
            "usemtl colour_1\nf 1 2 3\nf 3 2 1\nusemtl colour_0\nf 1 3 2\n");
}

constexpr const char* offFile =
    "# comment\nCOFF\n4 4 0 # and no edges\n"
    "0 0 0 255 0 0\n1 0 0 255 0 0\n1 1 0 255 0 0\n\n0 1 0.25 255 0 0\n"
    "3 0 1 2\n3 0 1 2 60 170 70\n4 0 1 2 3 0.902 0.235 0.196 1.0\n3 0 1 3 12\n";

TEST(WriteObj, MarksAnEmptyMeshSoThatItReadsBack) {
  const TempDirectory directory;
  formats::WriteObj(directory / "a.obj", {});
  EXPECT_EQ(ReadWholeFile(directory / "a.obj"), "# 0 vertices, 0 facets\no empty\n");
  const formats::Mesh mesh = formats::ReadObj(directory / "a.obj", 0);
  EXPECT_TRUE(mesh.vertices.empty());
  EXPECT_TRUE(mesh.facets.empty());
}

TEST(ReadOff, TakesFacesWithAndWithoutColours) {
  const Mesh mesh = ReadWith(formats::ReadOff, offFile, 77);
  ASSERT_EQ(mesh.vertices.size(), 4U);
  EXPECT_THAT(mesh.vertices[3], ElementsAre(0, 1, 0.25));
  ASSERT_EQ(mesh.facets.size(), 5U);
  EXPECT_EQ(mesh.facets[0].colour, 77);
  EXPECT_EQ(mesh.facets[1].colour, 2);
  EXPECT_EQ(mesh.facets[2].colour, 1);
  EXPECT_THAT(mesh.facets[3].vertices, ElementsAre(0, 2, 3));
  EXPECT_EQ(mesh.facets[3].colour, 1);
  EXPECT_EQ(mesh.facets[4].colour, 77);
}

TEST(ReadOff, RefusesWrongFilesAndNamesTheLine) {
  const auto message = [](const std::string& text) { return MessageFor(formats::ReadOff, text); };
  EXPECT_THAT(message(""), HasSubstr("\"OFF\" should stand"));
  EXPECT_THAT(message("4OFF\n"), HasSubstr("does not begin with OFF (line 1)"));
  EXPECT_THAT(message("OFF\n-1 0 0\n"), HasSubstr("vertex count is negative (line 2)"));
  EXPECT_THAT(message("OFF\n4000000000 0 0\n0 0 0\n"), HasSubstr("more than the file can hold"));
  EXPECT_THAT(message("OFF\n1 4000000000 0\n0 0 0\n"), HasSubstr("more than the file can hold"));
  EXPECT_THAT(message("OFF BINARY\n"), HasSubstr("\"BINARY\" is no whole number"));
  const std::string triangle = "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n";
  EXPECT_EQ(message(triangle + "3 0 1 2\n"), "");
  EXPECT_THAT(message(triangle), HasSubstr("a face should stand"));
  EXPECT_THAT(message(triangle + "\n\n"), HasSubstr("a face should stand"));
  EXPECT_THAT(message(triangle + "3 0 1\n"), HasSubstr("the line ends"));
  EXPECT_THAT(message(triangle + "3 0 1 3\n"), HasSubstr("none of the file's 3 (line 6)"));
  EXPECT_THAT(message(triangle + "3 0 1 2 0 0 300\n"), HasSubstr("out of range"));
  EXPECT_THAT(message(triangle + "-3 0 1 2\n"), HasSubstr("0 corners"));
}

TEST(WriteOff, WritesTheColourTablesColours) {
  const TempDirectory directory;
  formats::WriteOff(directory / "m.off", ThreeFacets());
  EXPECT_EQ(ReadWholeFile(directory / "m.off"),
            "OFF\n3 3 0\n0 0 0\n0.1 0 0\n0 -1e+30 0\n"
            "3 0 1 2 230 60 50\n3 2 1 0 230 60 50\n3 0 2 1 192 192 192\n");
}

}  // namespace
