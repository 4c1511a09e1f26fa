// Per-path files cut at every length, invalid tools, and every call that can fail.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"
#include "toolpaths/CombinePathInfoFiles.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t kToolType = 2 + 1 + 24 + 72 + 24;  // in a per-path file
constexpr std::size_t kOutputHead = 24;

class CombinePathInfoFilesFailureTest : public ::testing::Test {
 protected:
  void Save(int number, const std::string& bytes) {
    support::WriteWholeFile(directory.Path() / ("TmpPathInfo" + std::to_string(number) + ".tmp"),
                            bytes);
  }
  bool Combine() { return CombinePathInfoFiles(support::AddinSpelling(directory.Path()).c_str()); }
  std::string Bytes() const { return support::ReadWholeFile(directory.Path() / "BinaryPaths.tmp"); }

  support::TempDirectory directory;
};

// A field or block of the input and what the output has of it: sizes in bytes.
struct Item {
  std::size_t input;
  std::size_t output;
};

struct Kind {
  support::Path path;
  std::vector<Item> toolItems;
};

std::vector<Item> ItemsOf(const Kind& kind) {
  std::vector<Item> items{{2, 4}, {1, 4}, {8, 8}, {8, 8}, {8, 8}, {72, 72}, {24, 24}, {2, 4}};
  items.insert(items.end(), kind.toolItems.begin(), kind.toolItems.end());
  return items;
}

std::vector<Kind> OneOfEachKind() {
  std::vector<Kind> kinds(4);
  kinds[0].toolItems = {{48, 48}};
  kinds[1].path.tool = support::UndercutBlock{};
  kinds[1].toolItems = {{114, 0}};
  // The counts are written when both have been read, the pieces of a list when all of it has been.
  kinds[2].path.tool = support::CustomBlock{
      {{1, {2, 3, 4, 5}, true, false}, {2, {6, 7, 8, 9}, false, true}}, {{6, {7, 8, 9}, true}}};
  kinds[2].path.pathType = 2;
  kinds[2].path.positions = {0, 0, 10, 0, 0, 1, 20, -1.5, 10, 0.6, 0, 0.8};
  kinds[2].toolItems = {{8, 8}, {76, 76}, {29, 29}};
  kinds[3].path.tool = support::CustomBlock{{}, {{6, {7, 8, 9}, true}}};
  kinds[3].toolItems = {{8, 8}, {29, 29}};
  return kinds;
}

std::string Expected(const support::Path& path) {
  std::string bytes = support::InterchangeBytes({path});
  if (path.tool.index() == 1) bytes.erase(kOutputHead + 8 + 24 + 72 + 24 + 4, 114);
  return bytes;
}

TEST_F(CombinePathInfoFilesFailureTest, EveryLengthInsideTheFixedFieldsIsFalseAndKeepsWholeFields) {
  support::TestHost host;
  for (const Kind& kind : OneOfEachKind()) {
    const std::string input = support::PathInfoBytes(kind.path);
    const std::size_t head = support::PathInfoHeadBytes(kind.path).size();
    for (std::size_t length = 0; length < head; ++length) {
      std::size_t inputEnd = 0;
      std::size_t outputEnd = kOutputHead;
      for (const Item& item : ItemsOf(kind)) {
        inputEnd += item.input;
        if (inputEnd > length) break;
        outputEnd += item.output;
      }
      Save(0, input.substr(0, length));
      ASSERT_FALSE(Combine()) << kind.path.tool.index() << ' ' << length;
      ASSERT_EQ(Bytes(), Expected(kind.path).substr(0, outputEnd)) << length;
    }
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

// From the first position on every length is a whole file. A last record of which only some doubles
// are there counts, completed from the record in front of it, from zeros when it is the first.
TEST_F(CombinePathInfoFilesFailureTest, EveryLengthInsideThePositionsIsTrueAndFillsTheLastRecord) {
  support::TestHost host;
  for (const Kind& kind : OneOfEachKind()) {
    const std::size_t doubles = kind.path.pathType == 1 ? 3 : 6;
    const std::string input = support::PathInfoBytes(kind.path);
    const std::size_t head = support::PathInfoHeadBytes(kind.path).size();
    for (std::size_t length = head; length <= input.size(); ++length) {
      const std::size_t whole = (length - head) / 8;
      support::Path expected = kind.path;
      expected.positions.resize(whole);
      while (expected.positions.size() % doubles != 0) {
        const std::size_t i = expected.positions.size();
        expected.positions.push_back(i < doubles ? 0 : expected.positions[i - doubles]);
      }
      Save(0, input.substr(0, length));
      ASSERT_TRUE(Combine()) << length;
      ASSERT_EQ(Bytes(), Expected(expected)) << length;
    }
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CombinePathInfoFilesFailureTest, PartialRecordBehindABlockTakesTheRecordInFrontOfIt) {
  support::TestHost host;
  support::Path path;
  path.positions.clear();
  for (int i = 0; i < 3 * 20000; ++i) path.positions.push_back(i);
  for (const int left : {1, 2}) {
    support::Path expected = path;
    expected.positions.push_back(-1);
    expected.positions.push_back(left == 2 ? -2 : 3 * 20000 - 2);
    expected.positions.push_back(3 * 20000 - 1);
    support::FileBuilder tail;
    tail.Double(-1);
    if (left == 2) tail.Double(-2);
    Save(0, support::PathInfoBytes(path) + tail.Text("seven b").Bytes());
    EXPECT_TRUE(Combine());
    EXPECT_EQ(Bytes(), support::InterchangeBytes({expected}));
  }
}

TEST_F(CombinePathInfoFilesFailureTest, UnknownToolTypeIsFalseBehindItsField) {
  support::TestHost host;
  for (const int type : {0, 4, -1, -32768, 32767}) {
    Save(0, support::PathInfoBytes(support::Path())
                .replace(kToolType, 2, support::FileBuilder().Int16(type).Bytes()));
    EXPECT_FALSE(Combine()) << type;
    std::string expected = support::InterchangeBytes({support::Path()});
    expected.resize(kOutputHead + 8 + 24 + 72 + 24);
    EXPECT_EQ(Bytes(), expected + support::FileBuilder().Int32(type).Bytes());
  }
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CombinePathInfoFilesFailureTest, CustomToolWithoutPiecesIsFalseBeforeItsCounts) {
  support::TestHost host;
  support::Path path;
  path.tool = support::CustomBlock{};
  for (const auto& [arcs, lines] : std::vector<std::pair<int, int>>{{0, 0}, {-1, 0}, {-7, -7}}) {
    Save(0, support::PathInfoBytes(path).replace(
                kToolType + 2, 8, support::FileBuilder().Int32(arcs).Int32(lines).Bytes()));
    EXPECT_FALSE(Combine());
    EXPECT_EQ(Bytes(), support::InterchangeBytes({path}).substr(0, kOutputHead + 8 + 24 + 72 + 28));
  }
}

// Counts that the file does not live up to cost neither time nor memory.
TEST_F(CombinePathInfoFilesFailureTest, HugeCustomCountsAreFalseBehindThem) {
  support::TestHost host;
  support::Path path;
  path.tool = support::CustomBlock{};
  const std::string counts = support::FileBuilder().Int32(INT32_MAX).Int32(INT32_MAX).Bytes();
  Save(0,
       support::PathInfoBytes(path).replace(kToolType + 2, 8, counts) + std::string(1000000, 'x'));
  EXPECT_FALSE(Combine());
  EXPECT_EQ(Bytes(),
            support::InterchangeBytes({path}).substr(0, kOutputHead + 8 + 24 + 72 + 28) + counts);
}

TEST_F(CombinePathInfoFilesFailureTest, NoMemoryForThePiecesIsFalseBehindTheCounts) {
  support::Path path;
  path.tool = support::CustomBlock{{{1, {2, 3, 4, 5}, true, false}}, {{6, {7, 8, 9}, true}}};
  Save(0, support::PathInfoBytes(path));
  const std::string whole = support::InterchangeBytes({path});
  const std::size_t counts = kOutputHead + 8 + 24 + 72 + 24 + 4 + 8;
  for (const auto& [call, end] :
       std::vector<std::pair<int, std::size_t>>{{1, counts}, {2, counts + 38}}) {
    support::TestHost host;
    host.faults.FailCall("new", call);
    EXPECT_FALSE(Combine());
    EXPECT_EQ(Bytes(), whole.substr(0, end));
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(CombinePathInfoFilesFailureTest, EachOpenFailingIsFalseWithWhatWasWrittenBefore) {
  const std::vector<support::Path> paths(2);
  Save(0, support::PathInfoBytes(paths[0]));
  Save(1, support::PathInfoBytes(paths[1]));
  const std::string whole = support::InterchangeBytes(paths);
  using StatusWrites = support::TestHost::StatusWrites;
  for (const StatusWrites writes : {StatusWrites::kOnEveryCall, StatusWrites::kOnlyOnFailure}) {
    for (int k = 1; k <= 3; ++k) {
      std::filesystem::remove(directory.Path() / "BinaryPaths.tmp");
      support::TestHost host;
      host.statusWrites = writes;
      host.faults.FailCall("m_fopen_hl", k);
      EXPECT_FALSE(Combine()) << k;
      if (k == 1) {
        EXPECT_THAT(host.events.Only({"exists"}), IsEmpty());
        EXPECT_FALSE(std::filesystem::exists(directory.Path() / "BinaryPaths.tmp"));
      } else {
        const std::size_t path = (whole.size() - kOutputHead) / 2;
        EXPECT_EQ(Bytes(), whole.substr(0, kOutputHead + static_cast<std::size_t>(k - 2) * path));
      }
      EXPECT_THAT(host.OpenStreams(), IsEmpty());
    }
  }
}

TEST_F(CombinePathInfoFilesFailureTest, StatusDecidesEvenWhenAStreamComesWithIt) {
  Save(0, support::PathInfoBytes(support::Path()));
  for (int k = 1; k <= 2; ++k) {
    support::TestHost host;
    host.faults.FailCall("m_fopen_hl status", k);
    EXPECT_FALSE(Combine()) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
    EXPECT_EQ(Bytes(), k == 1 ? "" : support::InterchangeBytes({support::Path()}).substr(0, 24));
  }
}

support::Path LongPath() {
  support::Path path;
  path.positions.assign(3 * 20000, 1.25);
  return path;
}

// A read that fails among the positions is their end, as the end of the file is; in front of them
// it is a failure.
TEST_F(CombinePathInfoFilesFailureTest, EveryFailingReadClosesEverything) {
  Save(0, support::PathInfoBytes(LongPath()));
  int reads = 0;
  {
    support::TestHost host;
    ASSERT_TRUE(Combine());
    reads = host.faults.Calls("fread");
    ASSERT_GE(reads, 3);
  }
  const std::string whole = support::InterchangeBytes({LongPath()});
  const std::size_t countAt = whole.size() - 3 * 20000 * 8 - 4;
  for (int k = 1; k <= reads; ++k) {
    support::TestHost host;
    host.faults.FailCall("fread", k);
    EXPECT_EQ(Combine(), k > 1) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
    const std::string bytes = Bytes();
    if (k == 1) {
      EXPECT_EQ(bytes, whole.substr(0, kOutputHead));
      continue;
    }
    EXPECT_LT(bytes.size(), whole.size()) << "asked again after the failure";
    const auto count = static_cast<std::uint32_t>((bytes.size() - countAt - 4) / 24);
    EXPECT_EQ(bytes.substr(0, countAt), whole.substr(0, countAt));
    EXPECT_EQ(bytes.substr(countAt, 4), support::FileBuilder().Uint32(count).Bytes());
  }
}

// What is on disk when `taken` bytes were written and no more: a count of positions is written
// twice, as a 0 and, when the positions are all there, in its place.
std::string LeftBehind(const std::vector<support::Path>& paths, std::size_t size,
                       std::size_t counts) {
  std::string bytes = support::InterchangeBytes(paths);
  std::size_t end = kOutputHead;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    end += 8 + 24 + 72 + 24 + 4 + 48 + 4;
    if (i >= counts) bytes.replace(end, 4, 4, '\0');
    end += 4 + 8 * paths[i].positions.size();
  }
  return bytes.substr(0, size);
}

TEST_F(CombinePathInfoFilesFailureTest, EveryFailingWriteIsFalseBehindWhatWasWrittenBefore) {
  const std::vector<support::Path> paths{LongPath(), support::Path()};
  Save(0, support::PathInfoBytes(paths[0]));
  Save(1, support::PathInfoBytes(paths[1]));
  int writes = 0;
  {
    support::TestHost host;
    ASSERT_TRUE(Combine());
    writes = host.faults.Calls("fwrite");
    ASSERT_GE(writes, 5);
  }
  std::size_t before = 0;
  for (int k = 1; k <= writes; ++k) {
    support::TestHost host;
    host.faults.FailCall("fwrite", k);
    EXPECT_FALSE(Combine()) << k;
    const std::size_t taken = host.faults.BytesWritten();
    const std::string bytes = Bytes();
    ASSERT_GE(taken, bytes.size());
    EXPECT_EQ(bytes, LeftBehind(paths, bytes.size(), (taken - bytes.size()) / 4)) << k;
    EXPECT_EQ(taken == 0, k == 1);
    EXPECT_TRUE(k == 1 || taken > before) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
    before = taken;
  }
  // The last write of all is the second count.
  EXPECT_EQ(Bytes(), LeftBehind(paths, support::InterchangeBytes(paths).size(), 1));
}

TEST_F(CombinePathInfoFilesFailureTest, EachFailingFlushIsFalse) {
  Save(0, support::PathInfoBytes(support::Path()));
  int flushes = 0;
  {
    support::TestHost host;
    ASSERT_TRUE(Combine());
    flushes = host.faults.Calls("fflush");
    ASSERT_GE(flushes, 3);
  }
  for (int k = 1; k <= flushes; ++k) {
    support::TestHost host;
    host.faults.FailCall("fflush", k);
    EXPECT_FALSE(Combine()) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

// Remembering the count's place and the end, going to the one and back to the other.
TEST_F(CombinePathInfoFilesFailureTest, EachFailingMoveWithinTheOutputIsFalse) {
  const std::vector<support::Path> paths(2);
  Save(0, support::PathInfoBytes(paths[0]));
  Save(1, support::PathInfoBytes(paths[1]));
  const std::size_t path = (support::InterchangeBytes(paths).size() - kOutputHead) / 2;
  for (const char* function : {"fgetpos", "fsetpos"}) {
    {
      support::TestHost host;
      ASSERT_TRUE(Combine());
      ASSERT_EQ(host.faults.Calls(function), 4);
      ASSERT_EQ(host.faults.Calls("fseek"), 0) << "does not go everywhere in large files";
    }
    for (int k = 1; k <= 4; ++k) {
      SCOPED_TRACE(function + std::to_string(k));
      support::TestHost host;
      host.faults.FailCall(function, k);
      EXPECT_FALSE(Combine());
      EXPECT_THAT(host.OpenStreams(), IsEmpty());
      // The first fgetpos fails in front of the count, everything else behind the positions; only
      // the last fsetpos comes behind the count.
      const std::size_t done = static_cast<std::size_t>(k - 1) / 2;
      const bool first = k % 2 == 1;
      const bool getting = std::string(function) == "fgetpos";
      const std::size_t size = kOutputHead + path * (done + 1) - (getting && first ? 4 + 8 * 6 : 0);
      EXPECT_EQ(Bytes(), LeftBehind(paths, size, done + (!getting && !first ? 1 : 0)));
    }
  }
}

TEST_F(CombinePathInfoFilesFailureTest, FullDiskIsFalseWithoutAnyPathToo) {
  support::TestHost host;
  host.faults.LimitDisk(20);
  EXPECT_FALSE(Combine());
  EXPECT_EQ(Bytes().size(), 20u);
}

// The provisional 0 stands in the count's place until the positions are all there.
TEST_F(CombinePathInfoFilesFailureTest, FullDiskAmongThePositionsLeavesTheCountAtZero) {
  const support::Path path = LongPath();
  Save(0, support::PathInfoBytes(path));
  std::string whole = support::InterchangeBytes({path});
  const std::size_t countAt = whole.size() - 3 * 20000 * 8 - 4;
  whole.replace(countAt, 4, 4, '\0');
  for (const std::size_t room : {std::size_t{0}, std::size_t{10}, countAt, countAt + 4,
                                 countAt + 100, whole.size() - 1, whole.size()}) {
    support::TestHost host;
    host.faults.LimitDisk(room);
    EXPECT_FALSE(Combine()) << room;
    EXPECT_EQ(Bytes(), whole.substr(0, room));
  }
}

}  // namespace
