#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FileBuilder.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"
#include "toolpaths/WriteSinglePointPaths.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double kPoint[3] = {1.5, -2, 0.25};

class WriteSinglePointPathsTest : public ::testing::Test {
 protected:
  WriteSinglePointPathsTest() { host.events.Alias(directory.Path().string(), "job"); }

  bool Write() {
    return WriteSinglePointPaths(support::AddinSpelling(directory.Path()).c_str(), 0.5, kPoint);
  }
  std::string Bytes() const { return support::ReadWholeFile(directory.Path() / "BinaryPaths.tmp"); }

  static std::string Expected(double tolerance, double radius) {
    support::FileBuilder file;
    file.Text("binary toolpaths").Int32(0).Uint32(1).Int32(1).Int32(0);
    file.Doubles({tolerance, tolerance, 0.5}).Doubles({1, 0, 0, 0, 1, 0, 0, 0, 1});
    file.Doubles({0, 0, 0}).Int32(1).Doubles({0, radius, 0, 90, 0, 0}).Uint32(1).Uint32(2);
    file.Doubles({1.5, -2, 0.25, 1.5, -2, 0.25});
    return file.Bytes();
  }

  support::TempDirectory directory;
  support::TestHost host;
};

TEST_F(WriteSinglePointPathsTest, InMillimetresTheToolHasTheRadiusOfAnInch) {
  EXPECT_TRUE(Write());
  EXPECT_EQ(Bytes(), Expected(0.025, 25.4));
}

TEST_F(WriteSinglePointPathsTest, InInchesTheValuesAreTheInchOnes) {
  host.metric = false;
  EXPECT_TRUE(Write());
  EXPECT_EQ(Bytes(), Expected(0.001, 1.0));
}

TEST_F(WriteSinglePointPathsTest, OpensAndClosesThroughTheHostUnderTheDriversUnit) {
  EXPECT_TRUE(Write());
  EXPECT_THAT(host.events.Only({"m_"}),
              ElementsAre("m_fopen_hl QZTUTLA2 job\\ job\\BinaryPaths.tmp wb",
                          "m_fclose QZTUTLA2 job\\BinaryPaths.tmp"));
}

TEST_F(WriteSinglePointPathsTest, HostThatWritesTheStatusOnlyOnFailureWillDo) {
  host.statusWrites = support::TestHost::StatusWrites::kOnlyOnFailure;
  EXPECT_TRUE(Write());
  host.faults.FailCall("m_fopen_hl", 2);
  EXPECT_FALSE(Write());
}

TEST_F(WriteSinglePointPathsTest, FileThatCannotBeOpenedIsFalse) {
  host.faults.FailCall("m_fopen_hl", 1);
  EXPECT_FALSE(Write());
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
}

TEST_F(WriteSinglePointPathsTest, FullDiskIsFalseAndLeavesWhatFitted) {
  const std::string whole = Expected(0.025, 25.4);
  for (std::size_t room = 0; room < whole.size(); room += 7) {
    host.faults = {};
    host.faults.LimitDisk(room);
    EXPECT_FALSE(Write()) << room;
    EXPECT_EQ(Bytes(), whole.substr(0, room));
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

}  // namespace
