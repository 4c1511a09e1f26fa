#include <cstdint>
#include <gmock/gmock.h>
#include <optional>

#include "formats/FileError.h"
#include "formats/meshes/MeshFile.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::FileError;
using formats::Mesh;
using formats::MeshEncoding;
using formats::MeshFormat;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::HasSubstr;

// Awkward doubles that single precision cannot hold, all 256 colours.
Mesh ManyColours() {
  Mesh mesh;
  for (int i = 0; i < 256; ++i) {
    const double t = 1.0 / (i + 3);
    const auto first = static_cast<std::int32_t>(mesh.vertices.size());
    mesh.vertices.push_back({t, 1000 * t, -t});
    mesh.vertices.push_back({t + 1, 1e-20 * t, 1e20 * t});
    mesh.vertices.push_back({t, t * t, t * t * t});
    mesh.facets.push_back({{first, first + 1, first + 2}, static_cast<std::uint8_t>(i)});
  }
  return mesh;
}

void ExpectSame(const Mesh& a, const Mesh& b, bool colours) {
  EXPECT_TRUE(a.vertices == b.vertices);
  ASSERT_EQ(a.facets.size(), b.facets.size());
  for (std::size_t i = 0; i < a.facets.size(); ++i) {
    EXPECT_EQ(a.facets[i].vertices, b.facets[i].vertices);
    EXPECT_EQ(a.facets[i].colour, colours ? b.facets[i].colour : 33);
  }
}

TEST(WriteMesh, RoundTripsEveryDoubleAndColourThatTheFormatHolds) {
  const TempDirectory directory;
  const Mesh mesh = ManyColours();
  struct Case {
    MeshFormat format;
    MeshEncoding encoding;
    bool colours;
  };
  for (const Case& c : {Case{MeshFormat::BinarySurface, MeshEncoding::Binary, true},
                        Case{MeshFormat::Ply, MeshEncoding::Binary, true},
                        Case{MeshFormat::Ply, MeshEncoding::Ascii, true},
                        Case{MeshFormat::Obj, MeshEncoding::Ascii, true},
                        Case{MeshFormat::Off, MeshEncoding::Ascii, true},
                        Case{MeshFormat::Stl, MeshEncoding::Ascii, false}}) {
    SCOPED_TRACE(formats::NameOf(c.format));
    // ".obj" for all: every other format is known by its content.
    formats::WriteMesh(directory / "m.obj", mesh, c.format, c.encoding);
    EXPECT_EQ(formats::MeshFormatOf(directory / "m.obj"), c.format);
    ExpectSame(formats::ReadMesh(directory / "m.obj", 33), mesh, c.colours);
  }
}

TEST(WriteMesh, RoundsToSinglePrecisionInBinaryStl) {
  const TempDirectory directory;
  const Mesh mesh{{{0.1, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}, 5}}};
  formats::WriteMesh(directory / "m.stl", mesh, MeshFormat::Stl, MeshEncoding::Binary);
  const Mesh back = formats::ReadMesh(directory / "m.stl", 33);
  ASSERT_EQ(back.vertices.size(), 3U);
  EXPECT_EQ(back.vertices[0][0], static_cast<double>(0.1F));
}

TEST(WriteMesh, GivesTheSameBytesEachTime) {
  const TempDirectory directory;
  const Mesh mesh = ManyColours();
  for (const MeshFormat format : {MeshFormat::Ply, MeshFormat::Obj, MeshFormat::Off}) {
    const MeshEncoding encoding = formats::UsualEncoding(format);
    formats::WriteMesh(directory / "a", mesh, format, encoding);
    formats::WriteMesh(directory / "b", mesh, format, encoding);
    EXPECT_TRUE(ReadWholeFile(directory / "a") == ReadWholeFile(directory / "b"));
  }
}

TEST(WriteMesh, RefusesAnEncodingTheFormatDoesNotHave) {
  const TempDirectory directory;
  const auto write = [&] {
    formats::WriteMesh(directory / "m.iff", {}, MeshFormat::BinarySurface, MeshEncoding::Ascii);
  };
  EXPECT_THAT(MessageOf<FileError>(write), HasSubstr("binary surface files are never ASCII"));
}

TEST(FormatByExtension, KnowsTheFiveFormatsInEitherCase) {
  EXPECT_EQ(formats::FormatByExtension("a/b.iff"), MeshFormat::BinarySurface);
  EXPECT_EQ(formats::FormatByExtension("b.TMP"), MeshFormat::BinarySurface);
  EXPECT_EQ(formats::FormatByExtension("b.Stl"), MeshFormat::Stl);
  EXPECT_EQ(formats::FormatByExtension("b.ply"), MeshFormat::Ply);
  EXPECT_EQ(formats::FormatByExtension("b.obj"), MeshFormat::Obj);
  EXPECT_EQ(formats::FormatByExtension("b.off"), MeshFormat::Off);
  EXPECT_EQ(formats::FormatByExtension("b.txt"), std::nullopt);
  EXPECT_EQ(formats::FormatByExtension("stl"), std::nullopt);
}

TEST(MeshFormatOf, TrustsTheContentMoreThanTheName) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.stl", "ply\nformat ascii 1.0\nend_header\n");
  EXPECT_EQ(formats::MeshFormatOf(directory / "a.stl"), MeshFormat::Ply);
  WriteWholeFile(directory / "a.ply", "  # first\nNOFF\n0 0 0\n");
  EXPECT_EQ(formats::MeshFormatOf(directory / "a.ply"), MeshFormat::Off);
  WriteWholeFile(directory / "a.off", "Solid x\nendsolid\n");
  EXPECT_EQ(formats::MeshFormatOf(directory / "a.off"), MeshFormat::Stl);
}

TEST(MeshFormatOf, NamesAFileThatIsNoMesh) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.txt", "hello\n");
  const auto ask = [&] { formats::MeshFormatOf(directory / "a.txt"); };
  EXPECT_THAT(MessageOf<FileError>(ask), HasSubstr("a.txt: not a mesh file"));
}

}  // namespace
