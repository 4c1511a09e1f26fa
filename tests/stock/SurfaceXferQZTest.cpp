// The file that the channel writes, byte for byte.

#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "stock/SurfaceXferQZ.h"
#include "support/FileBuilder.h"
#include "support/NothrowBlocks.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SurfaceXferQZTest : public ::testing::Test {
 protected:
  SurfaceXferQZTest() { host.events.Alias(directory.Path().string(), "job"); }

  std::string Name() const { return support::AddinSpelling(directory.Path()) + "mesh.tmp"; }
  std::string Bytes() const { return support::ReadWholeFile(directory.Path() / "mesh.tmp"); }

  support::TempDirectory directory;
  support::TestHost host;
};

void* Add(SurfaceXferQZ* channel, double x, double y, double z) {
  const double xyz[3] = {x, y, z};
  return channel->AddVertex(xyz);
}

TEST_F(SurfaceXferQZTest, ClosedEmptyItWritesTheHeaderAndTwoZeroCounts) {
  SurfaceXferQZ channel(Name().c_str());
  channel.Close();
  EXPECT_EQ(Bytes(), support::FileBuilder().Text("binary surface").Int32(0).Int32(0).Bytes());
}

TEST_F(SurfaceXferQZTest, DestroyedUnclosedItLeavesTheHeader) {
  {
    SurfaceXferQZ channel(Name().c_str());
    Add(&channel, 1, 2, 3);
  }
  EXPECT_EQ(Bytes(), "binary surface");
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(SurfaceXferQZTest, OpensAndClosesThroughTheHostUnderItsOwnUnit) {
  {
    SurfaceXferQZ channel(Name().c_str());
    channel.Close();
  }
  EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen SurfaceXferQZ job\\mesh.tmp wb",
                                                "m_fclose SurfaceXferQZ job\\mesh.tmp"));
}

TEST_F(SurfaceXferQZTest, WritesVerticesAndOneBasedTriangles) {
  SurfaceXferQZ channel(Name().c_str());
  EXPECT_EQ(channel.Reset(), 0);
  void* a = Add(&channel, 1.5, -0.0, 3);
  void* b = Add(&channel, 1e300, std::numeric_limits<double>::infinity(), -7);
  void* c = Add(&channel, 0, 0, 0);
  EXPECT_NE(channel.AddTriangle(a, b, c, 5), nullptr);
  EXPECT_NE(channel.AddTriangle(c, c, a, static_cast<char>(250)), nullptr);
  channel.Close();
  support::FileBuilder expected;
  expected.Text("binary surface").Int32(3).Int32(2);
  expected.Doubles({1.5, -0.0, 3, 1e300, std::numeric_limits<double>::infinity(), -7, 0, 0, 0});
  expected.Int32(1).Int32(2).Int32(3).Uint8(5).Int32(3).Int32(3).Int32(1).Uint8(250);
  EXPECT_EQ(Bytes(), expected.Bytes());
}

// The second block holds vertex 501 alone and comes first.
TEST_F(SurfaceXferQZTest, ListsTheNewestBlockOfVerticesFirst) {
  SurfaceXferQZ channel(Name().c_str());
  std::vector<void*> handles;
  for (int i = 1; i <= 501; ++i) handles.push_back(Add(&channel, i, 0, 0));
  channel.AddTriangle(handles[0], handles[499], handles[500], 9);
  channel.Close();
  support::FileBuilder expected;
  expected.Text("binary surface").Int32(501).Int32(1).Doubles({501, 0, 0});
  for (int i = 1; i <= 500; ++i) expected.Doubles({i * 1.0, 0, 0});
  expected.Int32(2).Int32(501).Int32(1).Uint8(9);
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(SurfaceXferQZTest, ListsTheNewestBlocksOfTrianglesFirst) {
  SurfaceXferQZ channel(Name().c_str());
  void* vertex = Add(&channel, 0, 0, 0);
  for (int i = 0; i < 1203; ++i) {
    channel.AddTriangle(vertex, vertex, vertex, static_cast<char>(i % 251));
  }
  channel.Close();
  support::FileBuilder expected;
  expected.Text("binary surface").Int32(1).Int32(1203).Doubles({0, 0, 0});
  for (const auto& [first, last] : {std::array{1000, 1203}, {500, 1000}, {0, 500}}) {
    for (int i = first; i < last; ++i) {
      expected.Int32(1).Int32(1).Int32(1).Uint8(static_cast<unsigned>(i % 251));
    }
  }
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(SurfaceXferQZTest, ResetForgetsEverythingAndKeepsTheFile) {
  SurfaceXferQZ channel(Name().c_str());
  for (int i = 0; i < 600; ++i) {
    void* vertex = Add(&channel, i, i, i);
    channel.AddTriangle(vertex, vertex, vertex, 1);
  }
  EXPECT_EQ(channel.Reset(), 0);
  void* vertex = Add(&channel, 4, 5, 6);
  channel.AddTriangle(vertex, vertex, vertex, 2);
  channel.Close();
  support::FileBuilder expected;
  expected.Text("binary surface").Int32(1).Int32(1).Doubles({4, 5, 6});
  expected.Int32(1).Int32(1).Int32(1).Uint8(2);
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(SurfaceXferQZTest, HandleIsTheAddressOfTheStoredRecord) {
  SurfaceXferQZ channel(Name().c_str());
  const auto* first = static_cast<const double*>(Add(&channel, 1, 2, 3));
  for (int i = 0; i < 2000; ++i) Add(&channel, 0, 0, 0);
  EXPECT_THAT(std::vector<double>(first, first + 3), ElementsAre(1, 2, 3));
}

// 500 records to a block: AddTriangle returns the block.
TEST_F(SurfaceXferQZTest, FiveHundredTrianglesShareABlock) {
  SurfaceXferQZ channel(Name().c_str());
  void* vertex = Add(&channel, 0, 0, 0);
  void* const block = channel.AddTriangle(vertex, vertex, vertex, 0);
  for (int i = 2; i <= 500; ++i) {
    EXPECT_EQ(channel.AddTriangle(vertex, vertex, vertex, 0), block);
  }
  EXPECT_NE(channel.AddTriangle(vertex, vertex, vertex, 0), block);
}

TEST_F(SurfaceXferQZTest, MeshOfManyBlocksRefersToTheRightVertices) {
  constexpr int kCount = 20000;
  SurfaceXferQZ channel(Name().c_str());
  std::vector<void*> handles;
  for (int i = 0; i < kCount; ++i) handles.push_back(Add(&channel, i, 0, 0));
  for (std::size_t i = 0; i + 2 < handles.size(); ++i) {
    channel.AddTriangle(handles[i], handles[i + 1], handles[i + 2], 0);
  }
  channel.Close();
  // Where the block-wise order puts vertex i: the blocks behind it come in front of it.
  const auto number = [](int i) {
    const int block = i / 500;
    const int behind = block == kCount / 500 - 1 ? 0 : kCount - 500 * (block + 1);
    return behind + i % 500 + 1;
  };
  support::FileBuilder expected;
  expected.Text("binary surface").Int32(kCount).Int32(kCount - 2);
  for (int block = kCount / 500 - 1; block >= 0; --block) {
    for (int i = 500 * block; i < 500 * (block + 1); ++i) expected.Doubles({i * 1.0, 0, 0});
  }
  for (int block = kCount / 500 - 1; block >= 0; --block) {
    for (int i = 500 * block; i < std::min(500 * (block + 1), kCount - 2); ++i) {
      expected.Int32(number(i)).Int32(number(i + 1)).Int32(number(i + 2)).Uint8(0);
    }
  }
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(SurfaceXferQZTest, AfterCloseTheChannelIsEmptyAndOwnsNothing) {
  SurfaceXferQZ channel(Name().c_str());
  for (int i = 0; i < 600; ++i) {
    void* vertex = Add(&channel, i, i, i);
    channel.AddTriangle(vertex, vertex, vertex, 1);
  }
  EXPECT_EQ(support::LivingBlocks(), 4u);
  channel.Close();
  EXPECT_EQ(support::LivingBlocks(), 0u);
  EXPECT_THAT(host.OpenStreams(), IsEmpty());

  // Table pointer, the two lists, the two counts, the stream, the name.
  ASSERT_EQ(sizeof(SurfaceXferQZ), 8u + 2 * 8 + 2 * 4 + 8 + 256);
  unsigned char bytes[sizeof(SurfaceXferQZ)];
  std::memcpy(bytes, static_cast<const void*>(&channel), sizeof bytes);
  EXPECT_THAT(std::vector<unsigned char>(bytes + 8, bytes + 40), ::testing::Each(0));
  EXPECT_STREQ(reinterpret_cast<const char*>(bytes + 40), Name().c_str());
}

}  // namespace
