// Files that cannot be created or written, and memory that runs out.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ChannelTest.h"
#include "support/FileBuilder.h"

namespace {

using support::CurveFileBytes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr double kOrigin[3] = {0, 0, 0};

class CurveXferQZFailureTest : public ChannelTest {
 protected:
  /// Many small curves, so that the file is several blocks long.
  static support::Outline ManyLoops() {
    support::Outline outline{Row(10000), {}};
    for (int i = 1; i < 10000; i += 2) {
      outline.segments.emplace_back(i, i + 1);
      outline.segments.emplace_back(i + 1, i);
    }
    return outline;
  }
  static std::string BytesWithoutCurves() {
    const support::Outline outline = ManyLoops();
    return CurveFileBytes({1, outline.points, 10000, {}});
  }
  static std::string WholeBytes() {
    const support::Outline outline = ManyLoops();
    support::CurveFile file{1, outline.points, 10000, {}};
    for (int i = 1; i < 10000; i += 2) file.curves.push_back({{i + 1, i}, {i, i + 1}});
    return CurveFileBytes(file);
  }
};

TEST_F(CurveXferQZFailureTest, WithoutAFileEveryPointIsRefusedAndCloseFails) {
  host.faults.FailCall("m_fopen", 1);
  {
    CurveXferQZ channel(0, Name().c_str());
    EXPECT_EQ(channel.Reset(), 0);
    EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
    EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
    EXPECT_EQ(channel.Close(), 0);
  }
  EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen CurveXferQZ job\\curves.tmp wb fails"));
  EXPECT_EQ(host.faults.BytesWritten(), 0u);
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
}

TEST_F(CurveXferQZFailureTest, UnknownModeCreatesAnEmptyFileAndTakesNoPoint) {
  for (const int mode : {2, -1, 256}) {
    {
      CurveXferQZ channel(mode, Name().c_str());
      EXPECT_EQ(Bytes(), "");
      EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
      EXPECT_EQ(channel.Close(), 0);
    }
    EXPECT_EQ(Bytes(), support::FileBuilder().Int32(0).Int32(0).Bytes());
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(CurveXferQZFailureTest, HeaderThatCannotBeWrittenLeavesAChannelThatTakesNoPoint) {
  host.faults.FailCall("fwrite", 1);
  {
    CurveXferQZ channel(0, Name().c_str());
    EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
  }
  EXPECT_EQ(Bytes(), "");
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CurveXferQZFailureTest, WithoutMemoryForThePointNumbersEveryPointIsRefused) {
  host.faults.FailCall("new", 1);
  CurveXferQZ channel(0, Name().c_str());
  EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
  EXPECT_EQ(channel.Close(), 0);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, {}, 0, {}}));
}

TEST_F(CurveXferQZFailureTest, NoMemoryForPointsRefusesOneAndChangesNothing) {
  CurveXferQZ channel(0, Name().c_str());
  host.faults.FailCall("new", 2);
  EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
  std::vector<const int*> handles;
  for (const auto& point : Row(5000)) handles.push_back(channel.AddPoint(point.data()));
  const auto refused = host.faults.Calls("new") + 1;
  host.faults.FailCall("new", refused);
  EXPECT_EQ(channel.AddPoint(kOrigin), nullptr);
  handles.push_back(channel.AddPoint(Row(5001).back().data()));
  EXPECT_EQ(*handles.back(), 5000);
  EXPECT_EQ(channel.Close(), 0);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, Row(5001), 0, {}}));
}

TEST_F(CurveXferQZFailureTest, NoMemoryForSegmentsRefusesOneAndChangesNothing) {
  CurveXferQZ channel(0, Name().c_str());
  const int* a = channel.AddPoint(Row(2)[0].data());
  const int* b = channel.AddPoint(Row(2)[1].data());
  // Calls so far: the numbers and the points. The array grows when it is half full.
  host.faults.FailCall("new", 3);
  host.faults.FailCall("new", 5);
  EXPECT_EQ(channel.AddSegment(a, b), nullptr);
  for (int i = 0; i < 5000; ++i) EXPECT_NE(channel.AddSegment(a, b), nullptr);
  EXPECT_EQ(channel.AddSegment(a, b), nullptr);
  EXPECT_NE(channel.AddSegment(a, b), nullptr);
  EXPECT_EQ(host.faults.Calls("new"), 6);
  EXPECT_EQ(channel.Close(), 1);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, Row(2), 5001, {}}));
}

TEST_F(CurveXferQZFailureTest, HandlesThatNameNoPointAreRefused) {
  CurveXferQZ channel(0, Name().c_str());
  const int first = 0;
  EXPECT_EQ(channel.AddSegment(&first, &first), nullptr) << "there is no point yet";
  const int* a = channel.AddPoint(kOrigin);
  EXPECT_EQ(channel.AddSegment(nullptr, a), nullptr);
  EXPECT_EQ(channel.AddSegment(a, nullptr), nullptr);
  for (const int number : {-1, 60000, 0x7FFFFFFF, -0x7FFFFFFF}) {
    EXPECT_EQ(channel.AddSegment(a, &number), nullptr) << number;
    EXPECT_EQ(channel.AddSegment(&number, a), nullptr) << number;
  }
  EXPECT_EQ(channel.Close(), 0);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, {{0, 0, 0}}, 0, {}}));
}

TEST_F(CurveXferQZFailureTest, HandleFromBeforeAResetReachesNoMemoryThatIsNotThere) {
  CurveXferQZ channel(0, Name().c_str());
  std::vector<const int*> handles;
  for (const auto& point : Row(6000)) handles.push_back(channel.AddPoint(point.data()));
  channel.Reset();
  EXPECT_NE(channel.AddSegment(handles[5999], handles[0]), nullptr);
  EXPECT_NE(channel.AddSegment(handles[0], handles[5999]), nullptr);
  // The points stay where they were until others take their places.
  EXPECT_EQ(channel.Close(), 1);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, {}, 2, {{{1, 6000}, {6000, 1}}}}));
}

TEST_F(CurveXferQZFailureTest, EveryFailingWriteIsTheResultAndWhatWasWrittenStays) {
  const std::string whole = WholeBytes();
  int writes = 0;
  {
    CurveXferQZ channel(1, Name().c_str());
    EXPECT_EQ(PlayAndClose(&channel, ManyLoops()), 1);
    writes = host.faults.Calls("fwrite");
    ASSERT_GE(writes, 5);
    ASSERT_TRUE(Bytes() == whole);
  }
  for (int k = 2; k <= writes; ++k) {
    host.faults = {};
    host.faults.FailCall("fwrite", k);
    {
      CurveXferQZ channel(1, Name().c_str());
      EXPECT_EQ(PlayAndClose(&channel, ManyLoops()), 0) << k;
    }
    EXPECT_TRUE(whole.starts_with(Bytes())) << k;
    EXPECT_LT(Bytes().size(), whole.size()) << k;
  }
}

TEST_F(CurveXferQZFailureTest, FullDiskLeavesWhatFits) {
  const std::string whole = WholeBytes();
  for (const std::size_t room :
       {std::size_t{18}, std::size_t{21}, std::size_t{26}, std::size_t{5000},
        BytesWithoutCurves().size(), BytesWithoutCurves().size() + 5, whole.size() - 1}) {
    host.faults = {};
    host.faults.LimitDisk(room);
    {
      CurveXferQZ channel(1, Name().c_str());
      EXPECT_EQ(PlayAndClose(&channel, ManyLoops()), 0) << room;
    }
    EXPECT_TRUE(Bytes() == whole.substr(0, room)) << room;
  }
  host.faults = {};
  host.faults.LimitDisk(whole.size());
  CurveXferQZ channel(1, Name().c_str());
  EXPECT_EQ(PlayAndClose(&channel, ManyLoops()), 1);
}

TEST_F(CurveXferQZFailureTest, DataThatTheStreamCannotPassOnIsTheResult) {
  for (const int k : {1, 2}) {
    host.faults = {};
    host.faults.FailCall("fflush", k);
    CurveXferQZ channel(0, Name().c_str());
    EXPECT_EQ(PlayAndClose(&channel, support::Square(5)), 0) << k;
  }
}

TEST_F(CurveXferQZFailureTest, PointsThatCannotBeWrittenAreStillThereForTheNextClose) {
  CurveXferQZ channel(0, Name().c_str());
  host.faults.FailCall("fflush", 1);
  EXPECT_EQ(PlayAndClose(&channel, support::Square(5)), 0);
  EXPECT_EQ(channel.Close(), 1);
  // The stream had them all the same, in its buffer.
  const std::string first = CurveFileBytes({0, support::Square(5).points, 4, {}});
  const std::string whole =
      CurveFileBytes({0, support::Square(5).points, 4, {{{4, 1}, {1, 2}, {2, 3}, {3, 4}}}});
  EXPECT_EQ(Bytes(), first + whole.substr(13));
}

TEST_F(CurveXferQZFailureTest, NoMemoryWhileJoiningFailsWithoutACurve) {
  int before = 0;
  int all = 0;
  {
    CurveXferQZ channel(1, Name().c_str());
    Play(&channel, ManyLoops());
    before = host.faults.Calls("new");
    EXPECT_EQ(channel.Close(), 1);
    all = host.faults.Calls("new");
  }
  // Three arrays of the lists, four of the queues, the index, the curve table, the buffer, what is
  // known of open ends; then each curve and six larger tables.
  ASSERT_EQ(all - before, 11 + 5000 + 6);
  const std::string withoutCurves = BytesWithoutCurves();
  for (int k = 1; k <= all - before; k += k < 130 ? 1 : 487) {
    host.faults = {};
    host.faults.FailCall("new", before + k);
    CurveXferQZ channel(1, Name().c_str());
    EXPECT_EQ(PlayAndClose(&channel, ManyLoops()), 0) << k;
    EXPECT_TRUE(Bytes() == withoutCurves) << k;
  }
}

TEST_F(CurveXferQZFailureTest, AfterAJoiningWithoutMemoryASecondCloseWorks) {
  // The lists' three arrays and the queues' four: until then nothing is grouped.
  for (int k = 1; k <= 7; ++k) {
    host.faults = {};
    CurveXferQZ channel(0, Name().c_str());
    Play(&channel, support::Square(5));
    host.faults.FailCall("new", host.faults.Calls("new") + k);
    EXPECT_EQ(channel.Close(), 0);
    EXPECT_EQ(channel.Close(), 1);
    const std::string first = CurveFileBytes({0, support::Square(5).points, 4, {}});
    support::FileBuilder second;
    second.Int32(0).Int32(4).Int32(4);
    for (const int number : {4, 1, 1, 2, 2, 3, 3, 4}) second.Int32(number);
    EXPECT_EQ(Bytes(), first + second.Bytes()) << k;
  }
}

}  // namespace
