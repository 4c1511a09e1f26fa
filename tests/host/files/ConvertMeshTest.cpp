#include <filesystem>
#include <gmock/gmock.h>
#include <string>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "host/files/ConvertMesh.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::FileError;
using formats::MeshEncoding;
using formats::MeshFormat;
using host::Conversion;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::HasSubstr;

formats::Mesh TwoColours() {
  return {{{0, 0, 0}, {0.1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{{0, 1, 2}, 3}, {{0, 2, 3}, 200}}};
}

class ConvertMesh : public testing::Test {
 protected:
  ConvertMesh() { formats::WriteBinarySurface(directory_ / "in.iff", TwoColours()); }

  std::string MessageFor(const Conversion& conversion) {
    return MessageOf<FileError>([&] { host::ConvertMesh(conversion); });
  }

  TempDirectory directory_;
};

TEST_F(ConvertMesh, GoesByTheOutputsExtension) {
  const auto result = host::ConvertMesh({directory_ / "in.iff", directory_ / "out.ply", {}, 0});
  EXPECT_EQ(result.inputFormat, MeshFormat::BinarySurface);
  EXPECT_EQ(result.outputFormat, MeshFormat::Ply);
  EXPECT_EQ(result.encoding, MeshEncoding::Binary);
  EXPECT_EQ(result.facets, 2U);
  EXPECT_EQ(result.vertices, 4U);
  EXPECT_FALSE(result.coloursLost);
  EXPECT_EQ(formats::FormatByContent(directory_ / "out.ply"), MeshFormat::Ply);
}

TEST_F(ConvertMesh, GoesThroughEveryFormatWithColoursAndBackToTheSameBytes) {
  std::string previous = directory_ / "in.iff";
  for (const char* name : {"a.ply", "b.obj", "c.off", "d.tmp"}) {
    host::ConvertMesh({previous, directory_ / name, {}, 0});
    previous = directory_ / name;
  }
  EXPECT_EQ(ReadWholeFile(directory_ / "d.tmp"), ReadWholeFile(directory_ / "in.iff"));
}

TEST_F(ConvertMesh, SaysWhatStlDoesNotKeepAndGivesItsFacetsTheColourAsked) {
  const auto toStl = host::ConvertMesh({directory_ / "in.iff", directory_ / "a.stl", {}, 0});
  EXPECT_TRUE(toStl.coloursLost);
  EXPECT_TRUE(toStl.roundedToSingle);
  const auto toAscii =
      host::ConvertMesh({directory_ / "in.iff", directory_ / "b.stl", MeshEncoding::Ascii, 0});
  EXPECT_FALSE(toAscii.roundedToSingle);
  host::ConvertMesh({directory_ / "b.stl", directory_ / "c.iff", {}, 77});
  const formats::Mesh back = formats::ReadBinarySurface(directory_ / "c.iff");
  EXPECT_EQ(back.vertices, TwoColours().vertices);
  EXPECT_EQ(back.facets.at(0).colour, 77);
}

TEST_F(ConvertMesh, RefusesItsInputAsOutputUnderAnyName) {
  const std::string before = ReadWholeFile(directory_ / "in.iff");
  EXPECT_THAT(MessageFor({directory_ / "in.iff", directory_ / "in.iff", {}, 0}),
              HasSubstr("is the input itself"));
  EXPECT_THAT(MessageFor({directory_ / "in.iff", directory_ / "./in.iff", {}, 0}),
              HasSubstr("is the input itself"));
  std::filesystem::create_hard_link(directory_ / "in.iff", directory_ / "hard.iff");
  EXPECT_THAT(MessageFor({directory_ / "in.iff", directory_ / "hard.iff", {}, 0}),
              HasSubstr("is the input itself"));
  EXPECT_EQ(ReadWholeFile(directory_ / "in.iff"), before);
}

TEST_F(ConvertMesh, LeavesTheOldOutputWhenTheInputCannotBeRead) {
  WriteWholeFile(directory_ / "bad.stl", "solid\nfacet");
  WriteWholeFile(directory_ / "out.ply", "mine");
  EXPECT_THAT(MessageFor({directory_ / "bad.stl", directory_ / "out.ply", {}, 0}),
              HasSubstr("bad.stl: the file ends"));
  EXPECT_EQ(ReadWholeFile(directory_ / "out.ply"), "mine");
}

TEST_F(ConvertMesh, LeavesTheOldOutputWhenTheMeshCannotBeWritten) {
  formats::Mesh mesh = TwoColours();
  mesh.vertices[0][0] = 1e300;
  formats::WriteBinarySurface(directory_ / "far.iff", mesh);
  WriteWholeFile(directory_ / "out.stl", "mine");
  EXPECT_THAT(MessageFor({directory_ / "far.iff", directory_ / "out.stl", {}, 0}),
              HasSubstr("too large"));
  EXPECT_EQ(ReadWholeFile(directory_ / "out.stl"), "mine");
  EXPECT_FALSE(std::filesystem::exists(directory_ / "out.stl.0.new"));
}

TEST_F(ConvertMesh, NamesTheOutputThatWasAskedForWhenItCannotBeWritten) {
  EXPECT_THAT(MessageFor({directory_ / "in.iff", directory_ / "none/out.ply", {}, 0}),
              testing::StartsWith((directory_ / "none/out.ply") + ": cannot be written"));
}

TEST_F(ConvertMesh, RefusesOutputsThatNoFormatFits) {
  EXPECT_THAT(MessageFor({directory_ / "in.iff", directory_ / "out.step", {}, 0}),
              HasSubstr("no mesh format has this extension"));
  EXPECT_THAT(MessageFor({directory_ / "in.iff", directory_ / "out.obj", MeshEncoding::Binary, 0}),
              HasSubstr("OBJ files are never binary"));
}

}  // namespace
