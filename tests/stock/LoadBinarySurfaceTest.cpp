// What a well-formed file plays into a channel, mode by mode.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ListChannel.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Four vertices, the third used by no triangle; colours 3, 200 and 3.
support::Surface ThreeTriangles() {
  return {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {-1, -2, -0.0}},
          {{{1, 2, 4}, 3}, {{4, 2, 1}, 200}, {{2, 2, 1}, 3}}};
}

class LoadBinarySurfaceTest : public ::testing::Test {
 protected:
  LoadBinarySurfaceTest() { host.events.Alias(directory.Path().string(), "job"); }

  std::string Name() const { return support::AddinSpelling(directory.Path()) + "mesh.tmp"; }

  bool Load(const std::string& bytes, short mode = 0,
            const std::vector<unsigned char>& colours = {}) {
    support::WriteWholeFile(directory.Path() / "mesh.tmp", bytes);
    return LoadBinarySurface(Name().c_str(), &channel, mode,
                             static_cast<unsigned short>(colours.size()), colours.data());
  }

  support::TempDirectory directory;
  support::TestHost host;
  ListChannel channel;
};

TEST_F(LoadBinarySurfaceTest, Mode0PlaysTheWholeFileInOrder) {
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles())));
  EXPECT_EQ(channel.calls, "RVVVVTTTC");
  EXPECT_EQ(channel.mesh, ThreeTriangles());
}

TEST_F(LoadBinarySurfaceTest, OpensAndClosesThroughTheHostUnderTheDriversUnit) {
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles())));
  EXPECT_THAT(host.events.Only({"m_"}),
              ElementsAre("m_fopen QZTUTLA2 job\\mesh.tmp rb", "m_fclose QZTUTLA2 job\\mesh.tmp"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(LoadBinarySurfaceTest, HeaderBytesMayBeAnything) {
  std::string bytes = support::BinarySurfaceBytes(ThreeTriangles());
  bytes.replace(0, 14, 14, '\0');
  EXPECT_TRUE(Load(bytes));
  EXPECT_EQ(channel.mesh, ThreeTriangles());
}

TEST_F(LoadBinarySurfaceTest, BytesBehindTheLastTriangleAreNotLookedAt) {
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles()) + "more"));
  EXPECT_EQ(channel.mesh, ThreeTriangles());
}

TEST_F(LoadBinarySurfaceTest, MeshLargerThanABlockArrivesWhole) {
  support::Surface mesh;
  for (int i = 0; i < 10000; ++i) mesh.vertices.push_back({i + 0.5, -i * 1.0, i / 7.0});
  for (int i = 0; i < 20000; ++i) {
    mesh.facets.push_back({{i % 10000 + 1, (i * 7) % 10000 + 1, 10000 - i % 10000},
                           static_cast<unsigned char>(i % 256)});
  }
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(mesh)));
  EXPECT_EQ(channel.mesh, mesh);
}

TEST_F(LoadBinarySurfaceTest, Mode1KeepsTrianglesOfTheColourAndVerticesOfAllTriangles) {
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles()), 1, {200}));
  EXPECT_EQ(channel.calls, "RVVVTC");
  // The third vertex is used by no triangle; the others are, though not all by the kept one.
  const support::Surface expected{{{1, 2, 3}, {4, 5, 6}, {-1, -2, -0.0}}, {{{3, 2, 1}, 200}}};
  EXPECT_EQ(channel.mesh, expected);
}

TEST_F(LoadBinarySurfaceTest, Mode1PassesAVertexThatOnlyOtherColoursUse) {
  support::Surface mesh = ThreeTriangles();
  mesh.facets = {{{1, 2, 3}, 5}, {{1, 2, 4}, 6}};
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(mesh), 1, {6}));
  EXPECT_EQ(channel.calls, "RVVVVTC");
}

TEST_F(LoadBinarySurfaceTest, Mode1PassesTrianglesOncePerMatchingEntry) {
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles()), 1, {3, 9, 3}));
  EXPECT_EQ(channel.calls, "RVVVTTTTC");
  const std::vector<support::Surface::Facet> expected{
      {{1, 2, 3}, 3}, {{1, 2, 3}, 3}, {{2, 2, 1}, 3}, {{2, 2, 1}, 3}};
  EXPECT_EQ(channel.mesh.facets, expected);
}

TEST_F(LoadBinarySurfaceTest, Mode1WithoutColoursClosesWithoutTriangles) {
  EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles()), 1));
  EXPECT_EQ(channel.calls, "RVVVC");
}

TEST_F(LoadBinarySurfaceTest, Mode1TakesTheColourCountAsSigned) {
  support::WriteWholeFile(directory.Path() / "mesh.tmp",
                          support::BinarySurfaceBytes(ThreeTriangles()));
  const unsigned char colours[] = {3};
  EXPECT_TRUE(LoadBinarySurface(Name().c_str(), &channel, 1, 0xFFFF, colours));
  EXPECT_EQ(channel.calls, "RVVVC");
}

TEST_F(LoadBinarySurfaceTest, AnyOtherModeOnlyResetsAndCloses) {
  for (const short mode : {short{2}, short{-1}}) {
    channel.calls.clear();
    EXPECT_TRUE(Load(support::BinarySurfaceBytes(ThreeTriangles()), mode, {3}));
    EXPECT_EQ(channel.calls, "RC");
  }
}

TEST_F(LoadBinarySurfaceTest, ASmallFileComesBackByteForByteFromTheWritingChannel) {
  const std::string bytes = support::BinarySurfaceBytes(support::Cube(10, 7));
  support::WriteWholeFile(directory.Path() / "mesh.tmp", bytes);
  const std::string copy = support::AddinSpelling(directory.Path()) + "copy.tmp";
  {
    SurfaceXferQZ writer(copy.c_str());
    EXPECT_TRUE(LoadBinarySurface(Name().c_str(), &writer, 0, 0, nullptr));
  }
  EXPECT_EQ(support::ReadWholeFile(directory.Path() / "copy.tmp"), bytes);
}

// What a mesh is without the order and numbers of its records: each facet by its corners' places.
std::vector<std::string> Geometry(const support::Surface& mesh) {
  std::vector<std::string> facets;
  for (const auto& facet : mesh.facets) {
    support::FileBuilder corners;
    for (const std::int32_t number : facet.numbers) {
      for (const double x : mesh.vertices.at(static_cast<std::size_t>(number) - 1)) {
        corners.Double(x);
      }
    }
    facets.push_back(corners.Uint8(facet.colour).Bytes());
  }
  std::sort(facets.begin(), facets.end());
  return facets;
}

TEST_F(LoadBinarySurfaceTest, ALargeFileComesBackWithTheSameGeometryInTheBlocksOrder) {
  support::Surface mesh;
  for (int i = 0; i < 1201; ++i) mesh.vertices.push_back({i + 0.5, -i * 1.0, i / 7.0});
  for (int i = 0; i < 1702; ++i) {
    mesh.facets.push_back(
        {{i % 1201 + 1, (i * 7) % 1201 + 1, 1201 - i % 1201}, static_cast<unsigned char>(i % 256)});
  }
  const std::string bytes = support::BinarySurfaceBytes(mesh);
  support::WriteWholeFile(directory.Path() / "mesh.tmp", bytes);
  const std::string copy = support::AddinSpelling(directory.Path()) + "copy.tmp";
  {
    SurfaceXferQZ writer(copy.c_str());
    EXPECT_TRUE(LoadBinarySurface(Name().c_str(), &writer, 0, 0, nullptr));
  }
  EXPECT_TRUE(LoadBinarySurface(copy.c_str(), &channel, 0, 0, nullptr));
  EXPECT_EQ(Geometry(channel.mesh), Geometry(mesh));
  EXPECT_NE(support::ReadWholeFile(directory.Path() / "copy.tmp"), bytes);
  EXPECT_EQ(channel.mesh.vertices.front(), mesh.vertices[1000]);
}

}  // namespace
