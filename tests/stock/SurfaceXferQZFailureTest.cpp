// Files that cannot be created or written, and memory that runs out.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "stock/SurfaceXferQZ.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SurfaceXferQZFailureTest : public ::testing::Test {
 protected:
  std::string Name() const { return support::AddinSpelling(directory.Path()) + "mesh.tmp"; }

  void Fill(SurfaceXferQZ* channel, int records) {
    for (int i = 0; i < records; ++i) {
      const double xyz[3] = {i * 1.0, 0, 0};
      void* vertex = channel->AddVertex(xyz);
      channel->AddTriangle(vertex, vertex, vertex, 0);
    }
  }

  support::TempDirectory directory;
};

TEST_F(SurfaceXferQZFailureTest, WithoutAFileCloseWritesNothingAndLeavesNothing) {
  support::TestHost host;
  host.events.Alias(directory.Path().string(), "job");
  // A file of an earlier run must not pass for this one's.
  support::WriteWholeFile(directory.Path() / "mesh.tmp", "stale");
  host.faults.FailCall("m_fopen", 1);
  {
    SurfaceXferQZ channel(Name().c_str());
    Fill(&channel, 3);
    channel.Close();
  }
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
  EXPECT_EQ(host.faults.BytesWritten(), 0u);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("m_fopen SurfaceXferQZ job\\mesh.tmp wb fails", "remove job\\mesh.tmp"));
}

TEST_F(SurfaceXferQZFailureTest, EveryFailingWriteDeletesTheFile) {
  int writes = 0;
  {
    support::TestHost host;
    SurfaceXferQZ channel(Name().c_str());
    Fill(&channel, 12000);
    channel.Close();
    writes = host.faults.Calls("fwrite");
    ASSERT_GE(writes, 4);
    ASSERT_EQ(support::ReadWholeFile(directory.Path() / "mesh.tmp").size(), 22u + 12000 * 37);
  }
  for (int k = 1; k <= writes; ++k) {
    support::TestHost host;
    host.events.Alias(directory.Path().string(), "job");
    host.faults.FailCall("fwrite", k);
    SurfaceXferQZ channel(Name().c_str());
    Fill(&channel, 12000);
    channel.Close();
    EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty()) << k;
    EXPECT_THAT(host.events.Events(),
                ElementsAre("m_fopen SurfaceXferQZ job\\mesh.tmp wb",
                            "m_fclose SurfaceXferQZ job\\mesh.tmp", "remove job\\mesh.tmp"));
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(SurfaceXferQZFailureTest, DataThatTheStreamCannotPassOnDeletesTheFile) {
  support::TestHost host;
  host.faults.FailFrom("fflush", 1);
  SurfaceXferQZ channel(Name().c_str());
  Fill(&channel, 3);
  channel.Close();
  EXPECT_EQ(host.faults.Calls("fflush"), 1);
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(SurfaceXferQZFailureTest, FullDiskDeletesTheFile) {
  constexpr std::uint64_t kWhole = 22 + 600 * 37;
  for (const std::uint64_t room :
       {std::uint64_t{0}, std::uint64_t{14}, std::uint64_t{21}, std::uint64_t{10000}, kWhole - 1}) {
    support::TestHost host;
    host.faults.LimitDisk(room);
    SurfaceXferQZ channel(Name().c_str());
    Fill(&channel, 600);
    channel.Close();
    EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty()) << room;
  }
}

TEST_F(SurfaceXferQZFailureTest, NoMemoryForAVertexBlockReturnsNullAndChangesNothing) {
  support::TestHost host;
  SurfaceXferQZ channel(Name().c_str());
  const double xyz[3] = {1, 2, 3};
  host.faults.FailCall("new", 1);
  EXPECT_EQ(channel.AddVertex(xyz), nullptr);
  void* vertex = channel.AddVertex(xyz);
  ASSERT_NE(vertex, nullptr);
  for (int i = 2; i <= 500; ++i) channel.AddVertex(xyz);
  host.faults.FailCall("new", 3);
  EXPECT_EQ(channel.AddVertex(xyz), nullptr);
  channel.Close();
  EXPECT_EQ(support::ReadWholeFile(directory.Path() / "mesh.tmp").substr(0, 22),
            support::FileBuilder().Text("binary surface").Int32(500).Int32(0).Bytes());
}

TEST_F(SurfaceXferQZFailureTest, NoMemoryForATriangleBlockReturnsNullAndChangesNothing) {
  support::TestHost host;
  SurfaceXferQZ channel(Name().c_str());
  const double xyz[3] = {1, 2, 3};
  void* vertex = channel.AddVertex(xyz);
  host.faults.FailCall("new", 2);
  EXPECT_EQ(channel.AddTriangle(vertex, vertex, vertex, 1), nullptr);
  EXPECT_NE(channel.AddTriangle(vertex, vertex, vertex, 2), nullptr);
  channel.Close();
  support::FileBuilder expected;
  expected.Text("binary surface").Int32(1).Int32(1).Doubles({1, 2, 3});
  expected.Int32(1).Int32(1).Int32(1).Uint8(2);
  EXPECT_EQ(support::ReadWholeFile(directory.Path() / "mesh.tmp"), expected.Bytes());
}

// A producer that passes on the null of a vertex that found no memory must not bring the host down.
TEST_F(SurfaceXferQZFailureTest, TriangleWithoutAVertexDeletesTheFile) {
  support::TestHost host;
  SurfaceXferQZ channel(Name().c_str());
  const double xyz[3] = {1, 2, 3};
  void* vertex = channel.AddVertex(xyz);
  EXPECT_NE(channel.AddTriangle(vertex, nullptr, vertex, 1), nullptr);
  channel.Close();
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(SurfaceXferQZFailureTest, FileNameIsCutTo255Characters) {
  support::TestHost host;
  const std::string name(300, 'n');
  host.faults.FailCall("m_fopen", 1);
  SurfaceXferQZ channel(name.c_str());
  EXPECT_THAT(host.events.Events(),
              ElementsAre("m_fopen SurfaceXferQZ " + name.substr(0, 255) + " wb fails"));
}

}  // namespace
