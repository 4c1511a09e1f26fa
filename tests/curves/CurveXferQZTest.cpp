// What the channel takes, and the file around the curves.

#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "ChannelTest.h"
#include "platform/QZCore.h"
#include "support/FileBuilder.h"
#include "support/NothrowBlocks.h"

namespace {

using support::CurveFileBytes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CurveXferQZTest : public ChannelTest {};

TEST_F(CurveXferQZTest, ClosedEmptyItWritesTheHeaderAndTwoZeroCountsAndThatIsFailure) {
  {
    CurveXferQZ channel(0, Name().c_str());
    EXPECT_EQ(channel.Close(), 0);
  }
  EXPECT_EQ(Bytes(), support::FileBuilder().Text("binary curves").Int32(0).Int32(0).Bytes());
  {
    CurveXferQZ channel(1, Name().c_str());
    EXPECT_EQ(channel.Close(), 0);
  }
  EXPECT_EQ(Bytes(), support::FileBuilder().Text("binary tree_curves").Int32(0).Int32(0).Bytes());
}

TEST_F(CurveXferQZTest, DestroyedUnclosedItLeavesTheHeader) {
  for (const int mode : {0, 1}) {
    {
      CurveXferQZ channel(mode, Name().c_str());
      Play(&channel, support::Square(5));
    }
    EXPECT_EQ(Bytes(), support::CurveFileHeader(mode));
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CurveXferQZTest, OpensAtConstructionAndClosesAtDestructionUnderItsOwnUnit) {
  {
    CurveXferQZ channel(0, Name().c_str());
    EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen CurveXferQZ job\\curves.tmp wb"));
    PlayAndClose(&channel, support::Square(5));
    EXPECT_THAT(host.OpenStreams(), ElementsAre("CurveXferQZ job\\curves.tmp"));
  }
  EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen CurveXferQZ job\\curves.tmp wb",
                                                "m_fclose CurveXferQZ job\\curves.tmp"));
}

TEST_F(CurveXferQZTest, FileIsWholeAsSoonAsCloseReturns) {
  CurveXferQZ channel(0, Name().c_str());
  const support::Outline square = support::Square(5);
  EXPECT_EQ(PlayAndClose(&channel, square), 1);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, square.points, 4, {{{4, 1}, {1, 2}, {2, 3}, {3, 4}}}}));
}

TEST_F(CurveXferQZTest, TreeVariantHasTwoZeroNumbersWithEachCurve) {
  CurveXferQZ channel(1, Name().c_str());
  EXPECT_EQ(PlayAndClose(&channel, {Row(6), {{1, 2}, {2, 1}, {3, 4}, {4, 3}}}), 1);
  support::FileBuilder expected;
  expected.Text("binary tree_curves").Int32(6).Int32(4);
  for (int i = 0; i < 6; ++i) expected.Doubles({2.0 * i, 0, 0});
  for (const int first : {1, 3}) {
    expected.Int32(2).Int32(0).Int32(0);
    expected.Int32(first + 1).Int32(first).Int32(first).Int32(first + 1);
  }
  EXPECT_EQ(Bytes(), expected.Bytes());
}

TEST_F(CurveXferQZTest, PointsAreWrittenAsReceivedUsedOrNot) {
  CurveXferQZ channel(0, Name().c_str());
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const Points points = {{-0.0, 1e300, 5e-324}, {kInfinity, -7, 0.1}, {0, 0, 0}, {0, 0, 0}};
  EXPECT_EQ(PlayAndClose(&channel, {points, {}}), 0);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, points, 0, {}}));
}

TEST_F(CurveXferQZTest, HandleHoldsThePositionAndHandlesLieSideBySide) {
  CurveXferQZ channel(0, Name().c_str());
  const double xyz[3] = {1, 2, 3};
  const int* first = channel.AddPoint(xyz);
  for (int i = 1; i < 12000; ++i) {
    const int* handle = channel.AddPoint(xyz);
    ASSERT_EQ(handle, first + i);
    ASSERT_EQ(*handle, i);
  }
  EXPECT_EQ(*first, 0);
}

TEST_F(CurveXferQZTest, ProducersBufferMayBeReused) {
  CurveXferQZ channel(0, Name().c_str());
  double xyz[3] = {1, 2, 3};
  channel.AddPoint(xyz);
  xyz[0] = 9;
  channel.AddPoint(xyz);
  channel.Close();
  EXPECT_EQ(Bytes(), CurveFileBytes({0, {{1, 2, 3}, {9, 2, 3}}, 0, {}}));
}

TEST_F(CurveXferQZTest, SixtyThousandPointsAreTakenAndNoMore) {
  CurveXferQZ channel(0, Name().c_str());
  const int* last = nullptr;
  for (int i = 0; i < 60000; ++i) {
    const double xyz[3] = {i * 1.0, 0, 0};
    last = channel.AddPoint(xyz);
    ASSERT_NE(last, nullptr) << i;
  }
  const double refused[3] = {-1, -1, -1};
  EXPECT_EQ(channel.AddPoint(refused), nullptr);
  EXPECT_EQ(channel.AddPoint(refused), nullptr);
  channel.AddSegment(last, last - 59999);
  channel.AddSegment(last - 59999, last);
  EXPECT_EQ(channel.Close(), 1);
  Points points;
  for (int i = 0; i < 60000; ++i) points.push_back({i * 1.0, 0, 0});
  EXPECT_TRUE(Bytes() == CurveFileBytes({0, points, 2, {{{1, 60000}, {60000, 1}}}}));
}

TEST_F(CurveXferQZTest, SegmentsBeyondEveryGrowthAreKept) {
  CurveXferQZ channel(0, Name().c_str());
  support::Outline outline{Row(30000), {}};
  for (int i = 1; i < 30000; ++i) outline.segments.emplace_back(i, i + 1);
  outline.segments.emplace_back(30000, 1);
  EXPECT_EQ(PlayAndClose(&channel, outline), 1);
  Segments curve{{30000, 1}};
  curve.insert(curve.end(), outline.segments.begin(), outline.segments.end() - 1);
  EXPECT_TRUE(Bytes() == CurveFileBytes({0, outline.points, 30000, {curve}}));
}

TEST_F(CurveXferQZTest, ResetForgetsPointsAndSegmentsAndKeepsTheFile) {
  CurveXferQZ channel(0, Name().c_str());
  Play(&channel, {Row(7000), {{1, 2}, {2, 1}}});
  EXPECT_EQ(channel.Reset(), 0);
  const double xyz[3] = {1, 2, 3};
  const int* handle = channel.AddPoint(xyz);
  EXPECT_EQ(*handle, 0);
  EXPECT_EQ(channel.Close(), 0);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, {{1, 2, 3}}, 0, {}}));
}

TEST_F(CurveXferQZTest, GroupsMakeNoDifference) {
  CurveXferQZ channel(0, Name().c_str());
  CurveTransfer& asTheKernelSeesIt = channel;
  EXPECT_EQ(asTheKernelSeesIt.BeginGroup(), 0);
  Play(&channel, support::Square(5));
  asTheKernelSeesIt.EndGroup();
  EXPECT_EQ(asTheKernelSeesIt.BeginGroup(), 0);
  EXPECT_EQ(channel.Close(), 1);
  EXPECT_EQ(Bytes(),
            CurveFileBytes({0, support::Square(5).points, 4, {{{4, 1}, {1, 2}, {2, 3}, {3, 4}}}}));
}

TEST_F(CurveXferQZTest, InterfaceTakesNoNoticeOfGroupsByItself) {
  struct Plain : CurveTransfer {
    int Reset() override { return 0; }
    const int* AddPoint(const double*) override { return nullptr; }
    void* AddSegment(const int*, const int*) override { return nullptr; }
    int Close() override { return 1; }
  } plain;
  CurveTransfer& channel = plain;
  EXPECT_EQ(channel.BeginGroup(), 0);
  channel.EndGroup();
  EXPECT_EQ(sizeof(CurveTransfer), sizeof(void*));
}

// The numbers at the end, from the number capacity on, in their order.
TEST_F(CurveXferQZTest, KeepsItsFieldsInTheirOrder) {
  CurveXferQZ channel(1, Name().c_str());
  Play(&channel, {Row(3), {{1, 2}, {2, 1}}});
  for (int i = 0; i < 3; ++i) channel.BeginGroup();
  for (int i = 0; i < 2; ++i) channel.EndGroup();
  ASSERT_EQ(channel.Close(), 1);
  unsigned char bytes[sizeof channel];
  std::memcpy(bytes, static_cast<const void*>(&channel), sizeof bytes);
  std::int32_t numbers[14];
  double threshold;
  std::memcpy(&threshold, bytes + sizeof bytes - 8, 8);
  std::memcpy(numbers, bytes + sizeof bytes - 16 - sizeof numbers, sizeof numbers);
  EXPECT_EQ(threshold, 1.0);
  // Capacities of numbers, points, segments, curve table; growth step; tree; points, segments,
  // curves, length of the curve; groups begun and ended; mode.
  EXPECT_THAT(numbers, ElementsAre(60000, 5000, 10000, 100, 5000, 0, 0, 0, 2, 1, 2, 3, 2, 1));
}

TEST_F(CurveXferQZTest, AfterItsEndItOwnsNothing) {
  {
    CurveXferQZ channel(0, Name().c_str());
    PlayAndClose(&channel, support::Square(5));
    EXPECT_GT(support::LivingBlocks(), 0u);
  }
  EXPECT_EQ(support::LivingBlocks(), 0u);
}

}  // namespace
