// Invalid, cut and unreadable files: false, and the lines in front of the fault on disk.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "InterchangeLines.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"
#include "toolpaths/DumpBinaryPathsText.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Offsets in a file whose first path has a convex tool.
constexpr std::size_t kPathType = 24;
constexpr std::size_t kToolType = kPathType + 8 + 24 + 72 + 24;
constexpr std::size_t kCuts = kToolType + 4 + 48;
constexpr std::size_t kPositions = kCuts + 4;

std::string FirstLines(const std::string& text, int count) {
  std::size_t end = 0;
  for (int i = 0; i < count; ++i) end = text.find('\n', end) + 1;
  return text.substr(0, end);
}

std::string WithInt32(std::string bytes, std::size_t offset, std::int64_t value) {
  return bytes.replace(offset, 4, support::FileBuilder().Int32(value).Bytes());
}

class DumpBinaryPathsTextFailureTest : public ::testing::Test {
 protected:
  bool Dump() { return DumpBinaryPathsText(support::AddinSpelling(directory.Path()).c_str()); }
  bool Dump(const std::string& bytes) {
    support::WriteWholeFile(directory.Path() / "BinaryPaths.tmp", bytes);
    return Dump();
  }
  std::string Text() const { return support::ReadTextFile(directory.Path() / "BinaryPaths.txt"); }

  support::TempDirectory directory;
  const support::Path path{};
  const std::string good = support::InterchangeBytes({path});
  const std::string goodText = lines::File({path});
};

TEST_F(DumpBinaryPathsTextFailureTest, WithoutABinaryFileNoTextFileIsMade) {
  support::TestHost host;
  EXPECT_FALSE(Dump());
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
}

TEST_F(DumpBinaryPathsTextFailureTest, TextFileThatCannotBeMadeIsFalseAndTheBinaryOneIsClosed) {
  support::TestHost host;
  host.faults.FailCall("fopen", 2);
  EXPECT_FALSE(Dump(good));
  EXPECT_THAT(support::NamesIn(directory.Path()), ElementsAre("BinaryPaths.tmp"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(DumpBinaryPathsTextFailureTest, AnyVersionButZeroStopsAfterTheDelimiter) {
  support::TestHost host;
  for (const int version : {1, -1}) {
    EXPECT_FALSE(Dump(WithInt32(good, 16, version)));
    EXPECT_EQ(Text(), FirstLines(goodText, 1));
  }
}

TEST_F(DumpBinaryPathsTextFailureTest, PathCountOfMinusOneIsPrintedAndRunsToTheEndOfTheData) {
  support::TestHost host;
  EXPECT_FALSE(Dump(WithInt32(good, 20, -1)));
  EXPECT_EQ(Text(), lines::Head("-1") + lines::PathHead(path) + lines::Cut(path));
}

TEST_F(DumpBinaryPathsTextFailureTest, CutCountOfMinusOneIsPrintedAndRunsToTheEndOfTheData) {
  support::TestHost host;
  EXPECT_FALSE(Dump(WithInt32(good, kCuts, -1)));
  EXPECT_EQ(Text(), lines::Head("1") + lines::PathHead(path, "-1") + lines::Cut(path));
}

TEST_F(DumpBinaryPathsTextFailureTest, PositionCountWithTheTopBitSetRunsToTheEndOfTheData) {
  support::TestHost host;
  EXPECT_FALSE(Dump(WithInt32(good, kPositions, INT32_MIN)));
  std::string cut = lines::Cut(path);
  cut.replace(0, 1, "-2147483648");
  EXPECT_EQ(Text(), lines::Head("1") + lines::PathHead(path) + cut);
}

TEST_F(DumpBinaryPathsTextFailureTest, PathTypesButOneAndTwoStopBeforeTheirLine) {
  support::TestHost host;
  for (const std::int32_t type : {0, 3, -1, -2, INT32_MIN, INT32_MAX}) {
    EXPECT_FALSE(Dump(WithInt32(good, kPathType, type))) << type;
    EXPECT_EQ(Text(), FirstLines(goodText, 3)) << type;
  }
}

TEST_F(DumpBinaryPathsTextFailureTest, ToolTypesButOneToThreeStopBeforeTheirLine) {
  support::TestHost host;
  for (const std::int32_t type : {0, 4, -1, -3, INT32_MIN, INT32_MAX}) {
    EXPECT_FALSE(Dump(WithInt32(good, kToolType, type))) << type;
    EXPECT_EQ(Text(), FirstLines(goodText, 20)) << type;
  }
}

TEST_F(DumpBinaryPathsTextFailureTest, NoCutsStopBeforeTheirLine) {
  support::TestHost host;
  EXPECT_FALSE(Dump(WithInt32(good, kCuts, 0)));
  EXPECT_EQ(Text(), FirstLines(goodText, 27));
}

TEST_F(DumpBinaryPathsTextFailureTest, NoPositionsStopAfterAllEarlierLines) {
  support::TestHost host;
  EXPECT_FALSE(Dump(WithInt32(good, kPositions, 0)));
  EXPECT_EQ(Text(), FirstLines(goodText, 28));
}

TEST_F(DumpBinaryPathsTextFailureTest, CustomCountsAreSignedAndMustHoldAPiece) {
  support::TestHost host;
  support::Path custom;
  custom.tool = support::CustomBlock{{}, {{1, {2, 3, 4}, false}}};
  const std::string bytes = support::InterchangeBytes({custom});
  for (const auto& [arcs, lineCount] :
       std::vector<std::pair<int, int>>{{0, 0}, {-1, 2}, {2, -1}, {INT32_MIN, INT32_MAX}}) {
    EXPECT_FALSE(Dump(WithInt32(WithInt32(bytes, kToolType + 4, arcs), kToolType + 8, lineCount)));
    EXPECT_EQ(Text(), FirstLines(lines::File({custom}), 21) + std::to_string(arcs) +
                          " //number of custom arc segments\n" + std::to_string(lineCount) +
                          " //number of custom line segments\n");
  }
}

// Which lines a file cut to `length` bytes has: those of the fields and blocks that are complete.
// `items`: byte size and lines of each, in file order.
using Items = std::vector<std::pair<std::size_t, int>>;

Items ItemsOf(const support::Path& path) {
  Items items{{16, 1}, {4, 1}, {4, 1},  {4, 1},  {4, 1}, {8, 1},
              {8, 1},  {8, 1}, {72, 9}, {24, 3}, {4, 1}};
  const auto eachDouble = [&](int count) {
    items.insert(items.end(), static_cast<std::size_t>(count), {8, 1});
  };
  switch (path.tool.index()) {
    case 0:
      items.push_back({48, 6});
      break;
    case 1:
      eachDouble(2);
      items.push_back({1, 1});
      eachDouble(6);
      items.push_back({1, 1});
      eachDouble(6);
      break;
    default:
      // One arc and one line.
      items.insert(items.end(), 3, {4, 1});
      eachDouble(4);
      items.insert(items.end(), 2, {1, 1});
      items.push_back({4, 1});
      eachDouble(3);
      items.push_back({1, 1});
  }
  items.insert(items.end(), 2, {4, 1});
  const bool fiveAxis = path.pathType == 2;
  const std::size_t positions = path.positions.size() / (fiveAxis ? 6 : 3);
  items.insert(items.end(), positions, fiveAxis ? std::pair{48, 2} : std::pair{24, 1});
  return items;
}

int LinesWithin(const Items& items, std::size_t length) {
  int lineCount = 0;
  std::size_t end = 0;
  for (const auto& [size, count] : items) {
    end += size;
    if (end > length) break;
    lineCount += count;
  }
  return lineCount;
}

std::vector<support::Path> OnePathOfEachKind() {
  std::vector<support::Path> paths(3);
  paths[1].tool = support::UndercutBlock{};
  paths[2].tool = support::CustomBlock{{{1, {2, 3, 4, 5}, true, false}}, {{6, {7, 8, 9}, true}}};
  paths[2].pathType = 2;
  paths[2].positions = {0, 0, 10, 0, 0, 1, 20, -1.5, 10, 0.6, 0, 0.8};
  return paths;
}

TEST_F(DumpBinaryPathsTextFailureTest, EveryTruncatedLengthLeavesTheLinesOfWhatIsComplete) {
  support::TestHost host;
  for (const support::Path& each : OnePathOfEachKind()) {
    const std::string bytes = support::InterchangeBytes({each});
    const std::string text = lines::File({each});
    const Items items = ItemsOf(each);
    ASSERT_EQ(FirstLines(text, LinesWithin(items, bytes.size())), text);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      ASSERT_FALSE(Dump(bytes.substr(0, length))) << length;
      ASSERT_EQ(Text(), FirstLines(text, LinesWithin(items, length))) << length;
    }
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

support::Path LongPath() {
  support::Path path;
  path.positions.assign(3 * 20000, 1.25);
  return path;
}

// Count the calls of a good run, then fail each in turn.
TEST_F(DumpBinaryPathsTextFailureTest, EveryFailingReadIsFalseBehindTheLinesOfWhatArrived) {
  const std::string bytes = support::InterchangeBytes({LongPath()});
  const std::string text = lines::File({LongPath()});
  const Items items = ItemsOf(LongPath());
  int reads = 0;
  {
    support::TestHost host;
    ASSERT_TRUE(Dump(bytes));
    reads = host.faults.Calls("fread");
    ASSERT_GE(reads, 3);
  }
  for (int k = 1; k <= reads; ++k) {
    support::TestHost host;
    host.faults.FailCall("fread", k);
    EXPECT_FALSE(Dump()) << k;
    const std::size_t arrived = host.faults.BytesRead();
    EXPECT_GE(arrived, static_cast<std::size_t>(k - 1) * 60000) << "blocks are larger than that";
    EXPECT_EQ(Text(), FirstLines(text, LinesWithin(items, arrived))) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(DumpBinaryPathsTextFailureTest, EveryFailingWriteIsFalseBehindWhatWasWrittenBefore) {
  const std::string bytes = support::InterchangeBytes({LongPath()});
  const std::string text = lines::File({LongPath()});
  int writes = 0;
  {
    support::TestHost host;
    ASSERT_TRUE(Dump(bytes));
    writes = host.faults.Calls("fwrite");
    ASSERT_GE(writes, 3);
  }
  for (int k = 1; k <= writes; ++k) {
    support::TestHost host;
    host.faults.FailCall("fwrite", k);
    EXPECT_FALSE(Dump()) << k;
    // Nothing is written any more behind the block that failed.
    const std::size_t before = host.faults.BytesWritten();
    EXPECT_GE(before, static_cast<std::size_t>(k - 1) * 60000) << "blocks are larger than that";
    EXPECT_EQ(Text(), text.substr(0, before)) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(DumpBinaryPathsTextFailureTest, DataThatTheStreamCannotPassOnIsFalse) {
  support::TestHost host;
  host.faults.FailFrom("fflush", 1);
  EXPECT_FALSE(Dump(good));
  EXPECT_EQ(host.faults.Calls("fflush"), 1);
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(DumpBinaryPathsTextFailureTest, FullDiskIsFalseAndLeavesWhatFitted) {
  for (const std::size_t room : {std::size_t{0}, std::size_t{100}, goodText.size() - 1}) {
    support::TestHost host;
    host.faults.LimitDisk(room);
    EXPECT_FALSE(Dump(good));
    EXPECT_EQ(Text(), goodText.substr(0, room));
  }
}

}  // namespace
