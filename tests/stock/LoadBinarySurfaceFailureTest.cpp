// Files that end early, lie or cannot be read; channels that throw or run out of memory.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ListChannel.h"
#include "platform/QZCore.h"
#include "stock/LoadBinarySurface.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/NothrowBlocks.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t kHead = 22;

class LoadBinarySurfaceFailureTest : public ::testing::Test {
 protected:
  std::string Name() const { return support::AddinSpelling(directory.Path()) + "mesh.tmp"; }

  bool LoadAgain(short mode, const std::vector<unsigned char>& colours) {
    return LoadBinarySurface(Name().c_str(), &channel, mode,
                             static_cast<unsigned short>(colours.size()), colours.data());
  }
  bool Load(const std::string& bytes, short mode = 0,
            const std::vector<unsigned char>& colours = {7}) {
    support::WriteWholeFile(directory.Path() / "mesh.tmp", bytes);
    return LoadAgain(mode, colours);
  }

  support::TempDirectory directory;
  ListChannel channel;
};

std::string Counts(std::int32_t vertices, std::int32_t triangles) {
  return support::FileBuilder().Text("binary surface").Int32(vertices).Int32(triangles).Bytes();
}

TEST_F(LoadBinarySurfaceFailureTest, MissingFileIsFalseWithoutReset) {
  support::TestHost host;
  EXPECT_FALSE(LoadAgain(0, {}));
  EXPECT_EQ(channel.calls, "");
}

TEST_F(LoadBinarySurfaceFailureTest, CountsBelowOneAreRejectedBeforeTheReset) {
  support::TestHost host;
  const std::string body(1000, '\0');
  for (const auto& [vertices, triangles] :
       std::vector<std::pair<int, int>>{{8, 0}, {0, 12}, {8, -1}, {-1, 12}, {0, 0}}) {
    EXPECT_FALSE(Load(Counts(vertices, triangles) + body)) << vertices << ' ' << triangles;
    EXPECT_EQ(channel.calls, "");
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

// The channel keeps the whole records in front of the cut, and is not closed.
TEST_F(LoadBinarySurfaceFailureTest, EveryTruncatedLengthIsFalse) {
  support::TestHost host;
  const std::string whole = support::BinarySurfaceBytes(support::Cube(10, 7));
  constexpr std::size_t kVertexEnd = kHead + 8 * 24;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    channel = {};
    EXPECT_FALSE(Load(whole.substr(0, length))) << length;
    std::string expected;
    if (length >= kHead) {
      const std::size_t vertices = std::min<std::size_t>(8, (length - kHead) / 24);
      const std::size_t triangles = length < kVertexEnd ? 0 : (length - kVertexEnd) / 13;
      expected = "R" + std::string(vertices, 'V') + std::string(triangles, 'T');
    }
    EXPECT_EQ(channel.calls, expected) << length;
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(LoadBinarySurfaceFailureTest, EveryTruncatedLengthIsFalseInMode1BeforeAnyVertex) {
  support::TestHost host;
  const std::string whole = support::BinarySurfaceBytes(support::Cube(10, 7));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    channel = {};
    EXPECT_FALSE(Load(whole.substr(0, length), 1)) << length;
    EXPECT_EQ(channel.calls, length < kHead ? "" : "R") << length;
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(LoadBinarySurfaceFailureTest, OtherModesReadTheFileAllTheSame) {
  support::TestHost host;
  const std::string whole = support::BinarySurfaceBytes(support::Cube(10, 7));
  EXPECT_FALSE(Load(whole.substr(0, whole.size() - 1), 2));
  EXPECT_EQ(channel.calls, "R");
}

TEST_F(LoadBinarySurfaceFailureTest, VertexNumbersOutsideTheFileAreRejected) {
  support::TestHost host;
  for (const std::int32_t number : {0, 9, -1, INT32_MIN, INT32_MAX}) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
      support::Surface mesh = support::Cube(10, 7);
      mesh.facets[1].numbers[corner] = number;
      channel = {};
      EXPECT_FALSE(Load(support::BinarySurfaceBytes(mesh)));
      EXPECT_EQ(channel.calls, "RVVVVVVVVT") << number;
      channel = {};
      EXPECT_FALSE(Load(support::BinarySurfaceBytes(mesh), 1));
      EXPECT_EQ(channel.calls, "R") << number;
    }
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(LoadBinarySurfaceFailureTest, TheHandleThatTheChannelGaveIsPassedOnEvenWhenItIsNull) {
  support::TestHost host;
  for (const short mode : {short{0}, short{1}}) {
    channel = {};
    channel.nullVertexFrom = 4;
    EXPECT_TRUE(Load(support::BinarySurfaceBytes(support::Cube(10, 7)), mode)) << mode;
    ASSERT_EQ(channel.calls, "R" + std::string(8, 'V') + std::string(12, 'T') + "C") << mode;
    EXPECT_EQ(channel.mesh.facets[0].numbers, (std::array<std::int32_t, 3>{1, 3, 0})) << mode;
  }
}

TEST_F(LoadBinarySurfaceFailureTest, Mode1LooksAtNoHandleOfATriangleThatItDoesNotPass) {
  support::TestHost host;
  for (const std::vector<unsigned char>& colours : {std::vector<unsigned char>{}, {8}}) {
    channel = {};
    channel.nullVertexFrom = 1;
    EXPECT_TRUE(Load(support::BinarySurfaceBytes(support::Cube(10, 7)), 1, colours));
    EXPECT_EQ(channel.calls, "RVVVVVVVVC");
  }
}

// Counts that the file does not live up to cost neither time nor memory.
TEST_F(LoadBinarySurfaceFailureTest, HugeCountsEndWithTheData) {
  support::TestHost host;
  for (const short mode : {short{0}, short{1}, short{2}}) {
    channel = {};
    EXPECT_FALSE(Load(Counts(10000000, INT32_MAX) + std::string(100, 'x'), mode));
    EXPECT_EQ(channel.calls, mode == 0 ? "RVVVV" : "R");
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(LoadBinarySurfaceFailureTest, NoMemoryForTheHandlesIsFalseBeforeTheReset) {
  support::TestHost host;
  host.faults.FailCall("new", 1);
  EXPECT_FALSE(Load(support::BinarySurfaceBytes(support::Cube(10, 7))));
  EXPECT_EQ(channel.calls, "");
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

// Vertices and triangles that lie whole within the first `bytes` bytes behind the counts.
std::string Played(std::uint64_t bytes, std::size_t vertices) {
  const std::uint64_t vertexEnd = vertices * 24;
  if (bytes < vertexEnd) return std::string(bytes / 24, 'V');
  return std::string(vertices, 'V') + std::string((bytes - vertexEnd) / 13, 'T');
}

// Count the calls of a good run, then fail each in turn: the channel has what arrived before.
TEST_F(LoadBinarySurfaceFailureTest, EveryFailingReadIsFalseBehindTheRecordsThatArrived) {
  support::Surface mesh = support::Cube(10, 7);
  mesh.facets.resize(20000, {{1, 2, 3}, 7});
  const std::string bytes = support::BinarySurfaceBytes(mesh);
  for (const short mode : {short{0}, short{1}}) {
    int reads = 0;
    {
      support::TestHost host;
      ASSERT_TRUE(Load(bytes, mode));
      reads = host.faults.Calls("fread");
      ASSERT_GE(reads, mode == 0 ? 4 : 8);
    }
    std::size_t longest = 0;
    for (int k = 1; k <= reads; ++k) {
      support::TestHost host;
      host.faults.FailCall("fread", k);
      channel = {};
      EXPECT_FALSE(LoadAgain(mode, {7})) << mode << ' ' << k;
      const std::uint64_t arrived = host.faults.BytesRead();
      if (k == 1) {
        EXPECT_EQ(channel.calls, "");
      } else if (mode == 0) {
        EXPECT_EQ(channel.calls, "R" + Played(arrived - kHead, 8)) << k;
      } else {
        // Two seeks: to the triangles, which only marks their vertices, and back.
        const bool marked = host.faults.Calls("fseek") == 2;
        EXPECT_EQ(channel.calls, "R" + (marked ? Played(arrived, 8) : "")) << k;
      }
      longest = std::max(longest, channel.calls.size());
      EXPECT_THAT(host.OpenStreams(), IsEmpty());
    }
    EXPECT_GT(longest, 10000u) << "no failure late in the file";
  }
}

// Whoever goes on reading where the stream happens to stand finds, behind the first block of 65536
// bytes, a vertex and triangles there, too.
TEST_F(LoadBinarySurfaceFailureTest, EachFailingSeekOfMode1IsFalseBeforeAnyVertex) {
  std::string bytes = support::BinarySurfaceBytes(support::Cube(10, 7));
  bytes.resize(65536 + 24, '\0');
  support::FileBuilder more;
  for (int i = 0; i < 12; ++i) more.Int32(1).Int32(2).Int32(3).Uint8(7);
  bytes += more.Bytes() + std::string(100000, '\0');
  {
    support::TestHost host;
    ASSERT_TRUE(Load(bytes, 1));
    ASSERT_EQ(host.faults.Calls("fseek"), 2);
  }
  for (const int k : {1, 2}) {
    support::TestHost host;
    host.faults.FailCall("fseek", k);
    channel = {};
    EXPECT_FALSE(LoadAgain(1, {7})) << k;
    EXPECT_EQ(channel.calls, "R") << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(LoadBinarySurfaceFailureTest, AnExceptionPassesThroughAndLeavesStreamAndHandlesBehind) {
  const std::string bytes = support::BinarySurfaceBytes(support::Cube(10, 7));
  for (const short mode : {short{0}, short{1}}) {
    // Reset, a vertex, a triangle, Close.
    for (const std::size_t call : {1u, 3u, 12u, 22u}) {
      support::TestHost host;
      host.events.Alias(directory.Path().string(), "job");
      channel = {};
      channel.throwAt = call;
      EXPECT_THROW(Load(bytes, mode), ListChannel::Thrown);
      EXPECT_EQ(channel.calls.size(), call);
      EXPECT_THAT(host.OpenStreams(), ElementsAre("QZTUTLA2 job\\mesh.tmp"));
      EXPECT_THAT(host.events.Only({"m_fclose"}), IsEmpty());
      EXPECT_EQ(support::TakeLostBlocks(), 1u) << "the handle array";
    }
  }
}

TEST_F(LoadBinarySurfaceFailureTest, EveryOtherWayOutGivesTheHandlesBack) {
  const std::string whole = support::BinarySurfaceBytes(support::Cube(10, 7));
  support::TestHost host;
  for (const short mode : {short{0}, short{1}, short{2}}) {
    EXPECT_TRUE(Load(whole, mode));
    EXPECT_EQ(support::LivingBlocks(), 0u) << mode;
    EXPECT_FALSE(Load(whole.substr(0, whole.size() - 1), mode));
    EXPECT_EQ(support::LivingBlocks(), 0u) << mode;
  }
  EXPECT_EQ(host.faults.Calls("new"), 6);
}

}  // namespace
