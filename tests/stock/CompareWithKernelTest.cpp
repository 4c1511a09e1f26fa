// A comparison from the kernel on: what runs out, breaks or is stopped there, and all files
// afterwards.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "CompareTest.h"

namespace compare_test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kHeaderOnly = "binary surface";

TEST_F(CompareTest, WithoutMemoryForTheResultsTheJobEndsWithoutThem) {
  host.faults.FailCall("new", 3);
  EXPECT_FALSE(Compare());
  ExpectEndedWithTheBands(support::TwoBandsText());
}

TEST_F(CompareTest, WithoutMemoryForTheKernelTheEmptyResultAndTheLastCopyAreASuccess) {
  host.faults.FailCall("new", 4);
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(kHeaderOnly));
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), true));
  EXPECT_THAT(kernel.CallNames(), IsEmpty());
}

TEST_F(CompareTest, ResultsThatCannotBeCreatedLeaveTheVerdictToTheComparison) {
  host.faults.FailCall("m_fopen", 1);
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(""));
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), false));
  EXPECT_THAT(kernel.CallNames(), Contains("Compare ends"));
}

TEST_F(CompareTest, ResultsThatCannotBeCreatedAndAKernelErrorAreAFailure) {
  host.faults.FailCall("m_fopen", 1);
  kernel.At("Compare", support::ScriptedKernel::Progress("Comparing", 3));
  progress.cancelFrom = 1;
  EXPECT_FALSE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(""));
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), false));
}

TEST_F(CompareTest, DiskFullWhileTheResultsAreWrittenLeavesTheVerdictToTheComparison) {
  EXPECT_TRUE(Compare());
  host.faults.LimitDisk(host.faults.BytesWritten() - 1);
  EXPECT_TRUE(Compare());
  EXPECT_FALSE(JobHas("CompareResults.iff"));
}

TEST_F(CompareTest, PartThatDoesNotLoadIsNotComparedAndStillASuccess) {
  // No facet: the loader refuses it. The stock is not played any more.
  const std::string bad = support::BinarySurfaceBytes({support::OneFacet(3, 1).vertices, {}});
  support::WriteWholeFile(InJob("PartFileToCompare.iff"), bad);
  EXPECT_TRUE(Compare());
  EXPECT_THAT(kernel.CallNames(),
              ElementsAre("IFSweep()", "OpenCompareSurfaceChannel", "OpenCompareSurfaceChannel"));
  Files job = JobFilesWith(kHeaderOnly);
  job["PartFileToCompare.iff"] = bad;
  EXPECT_EQ(InJobNow(), job);
  Files keep = CopiesWith(support::TwoBandsText(), true);
  keep["Job1_TmpSaveComparePart.iff"] = bad;
  keep["Job1_TmpSaveCompareResults.iff"] = bad;
  EXPECT_EQ(InKeepNow(), keep);
}

TEST_F(CompareTest, StockThatDoesNotLoadIsNotComparedAndStillASuccess) {
  const std::string bad = StockBytes().substr(0, StockBytes().size() - 1);
  support::WriteWholeFile(InJob("StockModelOutput.tmp"), bad);
  EXPECT_TRUE(Compare());
  EXPECT_THAT(kernel.CallNames(), Not(Contains("Compare")));
  EXPECT_THAT(kernel.CallNames(), Contains("part.Close"));
  Files job = JobFilesWith(kHeaderOnly);
  job["StockModelOutput.tmp"] = bad;
  EXPECT_EQ(InJobNow(), job);
  Files keep = CopiesWith(support::TwoBandsText(), true);
  keep["Job1_TmpSaveCompareStock.iff"] = bad;
  EXPECT_EQ(InKeepNow(), keep);
}

TEST_F(CompareTest, LoadThatFailsAndALastCopyThatFailsAreAFailure) {
  host.faults.FailCall("m_fopen", 2);
  host.faults.FailCall("CopyFileA", 3);
  EXPECT_FALSE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(kHeaderOnly));
}

TEST_F(CompareTest, KernelErrorBeforeTheResultsAreClosedLeavesTheirHeaderAndIsASuccess) {
  kernel.At("output.Close", support::ScriptedKernel::Fatal("no way on"));
  EXPECT_TRUE(Compare());
  Files job = JobFilesWith(kHeaderOnly);
  job["ErrorCapture.txt"] = support::TextFileBytes("\nError Message Received:\nno way on\n");
  EXPECT_EQ(InJobNow(), job);
  Files keep = CopiesWith(support::TwoBandsText(), true);
  keep["Job1_TmpSaveErrorCapture.txt"] = job["ErrorCapture.txt"];
  EXPECT_EQ(InKeepNow(), keep);
}

TEST_F(CompareTest, KernelErrorBehindThatLeavesTheResultsWhole) {
  kernel.At("Compare ends", support::ScriptedKernel::Progress("Comparing", 3));
  progress.cancelFrom = 1;
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), true));
}

TEST_F(CompareTest, ResultsThatTheKernelNeverClosedAreClosedBehindTheKernel) {
  kernel.closesOutput = false;
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(kHeaderOnly));
  EXPECT_THAT(host.events.Only({"m_fclose SurfaceXferQZ", "~IFSweep", "exists job\\CompareR"}),
              ElementsAre("exists job\\CompareResults.iff", "~IFSweep()",
                          "m_fclose SurfaceXferQZ job\\CompareResults.iff",
                          "exists job\\CompareResults.iff"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CompareTest, LastCopyThatFailsMakesASuccessfulComparisonAFailure) {
  host.faults.FailCall("CopyFileA", 3);
  EXPECT_FALSE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), false));
}

TEST_F(CompareTest, OldResultThatCannotBeRemovedIsOverwritten) {
  host.faults.FailCall("remove", 1);
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
}

TEST_F(CompareTest, WarningsDoNotDisturbTheComparison) {
  kernel.At("Compare", support::ScriptedKernel::Warning("odd"));
  EXPECT_TRUE(Compare());
  EXPECT_EQ(support::ReadWholeFile(InJob("CompareResults.iff")), ResultBytes());
}

}  // namespace
}  // namespace compare_test
