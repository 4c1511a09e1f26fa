// A comparison up to the kernel, step by step: the order of its effects, and all files after every
// way through.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "CompareTest.h"
#include "support/JobEvents.h"

namespace compare_test {
namespace {

using support::Events;
using support::Joined;
using support::RegistryAsked;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;
using StatusWrites = support::TestHost::StatusWrites;

const Events kOldResultsRemoved = {"exists job\\CompareResults.iff",
                                   "remove job\\CompareResults.iff"};
const Events kInputsSeen = {"exists job\\PartFileToCompare.iff",
                            "exists job\\StockModelOutput.tmp"};
const Events kInputsCopied = {
    "copy job\\PartFileToCompare.iff -> keep\\Job1_TmpSaveComparePart.iff",
    "copy job\\StockModelOutput.tmp -> keep\\Job1_TmpSaveCompareStock.iff"};
const Events kBandsOpened = {"m_fopen_hl QZTUTLA2 keep\\ Job1_TmpSaveCompareInfo.txt w",
                             "m_fopen_hl QZTUTLA2 job\\ TmpCompareInfo.tmp rb"};
const Events kBandsClosed = {"m_fclose QZTUTLA2 job\\TmpCompareInfo.tmp",
                             "m_fclose QZTUTLA2 keep\\Job1_TmpSaveCompareInfo.txt"};
const Events kKernelMade = {"m_fopen SurfaceXferQZ job\\CompareResults.iff wb", "IFSweep()",
                            "OpenCompareSurfaceChannel", "OpenCompareSurfaceChannel"};
const Events kPartLoaded = support::FacetLoaded("part", "job\\PartFileToCompare.iff");
const Events kStockLoaded = support::FacetLoaded("stock", "job\\StockModelOutput.tmp");
const Events kCompareBegun = Joined({{"Compare part stock"}, support::FacetPlayed()});
const Events kCompareEnded = {"output.Close", "m_fclose SurfaceXferQZ job\\CompareResults.iff",
                              "Compare ends"};
const Events kKernelGone = {"~IFSweep()"};
const Events kResultsClosed = {"m_fclose SurfaceXferQZ job\\CompareResults.iff"};
const Events kResultsSeen = {"exists job\\CompareResults.iff"};
const Events kPartCopiedAsResults = {
    "copy job\\PartFileToCompare.iff -> keep\\Job1_TmpSaveCompareResults.iff"};

TEST_F(CompareTest, WholeOrderOfEffectsOfASuccessfulComparison) {
  EXPECT_TRUE(Compare());
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined({RegistryAsked(), kOldResultsRemoved, kInputsSeen,
                                       kInputsCopied, kBandsOpened, kBandsClosed, kKernelMade,
                                       kPartLoaded, kStockLoaded, kCompareBegun, kCompareEnded,
                                       kKernelGone, kResultsSeen, kPartCopiedAsResults})));
}

TEST_F(CompareTest, WholeOrderOfEffectsOfAKernelErrorDuringTheComparison) {
  kernel.At("output.AddTriangle", support::ScriptedKernel::Progress("Comparing", 3));
  progress.cancelFrom = 1;
  EXPECT_TRUE(Compare());
  // The channel is not closed as a channel: the kernel goes, then the stream.
  EXPECT_THAT(
      host.events.Events(),
      ElementsAreArray(Joined({RegistryAsked(), kOldResultsRemoved, kInputsSeen, kInputsCopied,
                               kBandsOpened, kBandsClosed, kKernelMade, kPartLoaded, kStockLoaded,
                               kCompareBegun, support::Cancelled(46), kKernelGone, kResultsClosed,
                               kResultsSeen, kPartCopiedAsResults})));
}

TEST_F(CompareTest, FilesAfterASuccessfulComparison) {
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), true));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
  EXPECT_EQ(kernel.LivingObjects(), 0);
}

TEST_F(CompareTest, KernelGetsPartStockAndBands) {
  EXPECT_TRUE(Compare());
  EXPECT_EQ(kernel.part, support::OneFacet(3, 1));
  EXPECT_EQ(kernel.stock, support::OneFacet(1, 5));
  EXPECT_EQ(kernel.bands, support::TwoBands());
}

TEST_F(CompareTest, WithoutARegistryValueTheCopiesLieBesideTheFiles) {
  host.stockDataDirectory.reset();
  EXPECT_TRUE(Compare());
  Files expected = JobFilesWith(ResultBytes());
  expected.merge(CopiesWith(support::TwoBandsText(), true));
  EXPECT_EQ(InJobNow(), expected);
  EXPECT_THAT(InKeepNow(), IsEmpty());
}

TEST_F(CompareTest, OlderCopiesAreOverwritten) {
  for (const auto& [name, bytes] : CopiesWith("", true)) {
    support::WriteWholeFile(InKeep(name), std::string(1000, 'x'));
  }
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), true));
}

TEST_F(CompareTest, WithoutADirectoryForTheCopiesTheResultIsThereAndTheVerdictFalse) {
  std::filesystem::remove_all(InKeep(""));
  EXPECT_FALSE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
  EXPECT_THAT(kernel.CallNames(), Contains("Compare ends"));
}

TEST_F(CompareTest, WithoutADirectoryForTheCopiesNothingIsComparedWhenTheHostWritesFailuresOnly) {
  std::filesystem::remove_all(InKeep(""));
  host.statusWrites = StatusWrites::kOnlyOnFailure;
  EXPECT_FALSE(Compare());
  EXPECT_EQ(InJobNow(), JobFilesWith(""));
  EXPECT_THAT(kernel.CallNames(), IsEmpty());
}

TEST_F(CompareTest, NamesFollowTheWorkingDirectoryAsItStands) {
  // Without its backslash "Job1" becomes the beginning of the names.
  for (const auto& [name, bytes] : JobFilesWith("")) {
    support::WriteWholeFile(InJob("../Job1" + name), bytes);
    RemoveFromJob(name);
  }
  const CString workDir = WorkDir().Left(WorkDir().GetLength() - 1);
  EXPECT_TRUE(SweepPartStockCompare(workDir, &callbacks));
  EXPECT_EQ(support::ReadWholeFile(InJob("../Job1CompareResults.iff")), ResultBytes());
  Files copies;
  for (const auto& [name, bytes] : CopiesWith(support::TwoBandsText(), true)) {
    copies["Job_" + name.substr(5)] = bytes;
  }
  EXPECT_EQ(InKeepNow(), copies);
}

TEST_F(CompareTest, CurrentDirectoryIsLeftAlone) {
  EXPECT_TRUE(Compare());
  EXPECT_THAT(host.events.Only({"getcwd", "chdir"}), IsEmpty());
}

// The part

TEST_F(CompareTest, WithoutAPartTheOldResultGoesAndThatIsASuccess) {
  RemoveFromJob("PartFileToCompare.iff");
  EXPECT_TRUE(Compare());
  Files expected = JobFilesWith("");
  expected.erase("PartFileToCompare.iff");
  EXPECT_EQ(InJobNow(), expected);
  EXPECT_THAT(InKeepNow(), IsEmpty());
  EXPECT_THAT(host.events.Events(), ElementsAreArray(Joined({RegistryAsked(),
                                                             kOldResultsRemoved,
                                                             {"exists job\\PartFileToCompare.iff"},
                                                             kResultsSeen})));
}

TEST_F(CompareTest, WithoutAPartAnOldResultThatStaysAsksForACopyThatCannotBeMade) {
  RemoveFromJob("PartFileToCompare.iff");
  host.faults.FailCall("remove", 1);
  EXPECT_FALSE(Compare());
  EXPECT_TRUE(JobHas("CompareResults.iff"));
  EXPECT_THAT(InKeepNow(), IsEmpty());
}

TEST_F(CompareTest, WithoutAnOldResultNothingIsRemoved) {
  RemoveFromJob("CompareResults.iff");
  EXPECT_TRUE(Compare());
  EXPECT_THAT(host.events.Only({"remove"}), IsEmpty());
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
}

// The stock

TEST_F(CompareTest, WithoutAStockTheResultIsFalseAndTheOldOneGone) {
  RemoveFromJob("StockModelOutput.tmp");
  EXPECT_FALSE(Compare());
  Files expected = JobFilesWith("");
  expected.erase("StockModelOutput.tmp");
  EXPECT_EQ(InJobNow(), expected);
  EXPECT_THAT(InKeepNow(), IsEmpty());
  EXPECT_THAT(
      host.events.Events(),
      ElementsAreArray(Joined({RegistryAsked(), kOldResultsRemoved, kInputsSeen, kResultsSeen})));
}

TEST_F(CompareTest, WithoutAStockAnOldResultThatStaysMakesTheLastCopyAndTheVerdict) {
  RemoveFromJob("StockModelOutput.tmp");
  host.faults.FailCall("remove", 1);
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InKeepNow(), (Files{{"Job1_TmpSaveCompareResults.iff", PartBytes()}}));
}

// The copies and the opens share one flag.

TEST_F(CompareTest, CopyOfThePartThatFailsDoesNotMatter) {
  for (const StatusWrites writes : {StatusWrites::kOnEveryCall, StatusWrites::kOnlyOnFailure}) {
    host.statusWrites = writes;
    host.faults = {};
    host.faults.FailCall("CopyFileA", 1);
    EXPECT_TRUE(Compare());
    Files expected = CopiesWith(support::TwoBandsText(), true);
    expected.erase("Job1_TmpSaveComparePart.iff");
    EXPECT_EQ(InKeepNow(), expected);
    EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
  }
}

TEST_F(CompareTest, CopyOfTheStockThatFailsIsForgottenWhenTheHostWritesEveryStatus) {
  host.faults.FailCall("CopyFileA", 2);
  EXPECT_TRUE(Compare());
  Files expected = CopiesWith(support::TwoBandsText(), true);
  expected.erase("Job1_TmpSaveCompareStock.iff");
  EXPECT_EQ(InKeepNow(), expected);
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
}

TEST_F(CompareTest, CopyOfTheStockThatFailsEndsTheJobWhenTheHostWritesFailuresOnly) {
  host.statusWrites = StatusWrites::kOnlyOnFailure;
  host.faults.FailCall("CopyFileA", 2);
  EXPECT_FALSE(Compare());
  Files expected = CopiesWith("", false);
  expected.erase("Job1_TmpSaveCompareStock.iff");
  EXPECT_EQ(InKeepNow(), expected);
  EXPECT_EQ(InJobNow(), JobFilesWith(""));
  EXPECT_THAT(host.events.Only({"m_f"}), ElementsAreArray(Joined({kBandsOpened, kBandsClosed})));
}

TEST_F(CompareTest, TextThatCannotBeOpenedIsDoneWithoutWhenTheHostWritesEveryStatus) {
  host.faults.FailCall("m_fopen_hl", 1);
  EXPECT_TRUE(Compare());
  Files expected = CopiesWith("", true);
  expected.erase("Job1_TmpSaveCompareInfo.txt");
  EXPECT_EQ(InKeepNow(), expected);
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
  EXPECT_THAT(host.events.Events(), Not(Contains("m_fclose QZTUTLA2 nothing")));
}

TEST_F(CompareTest, TextThatCannotBeOpenedEndsTheJobWhenTheHostWritesFailuresOnly) {
  host.statusWrites = StatusWrites::kOnlyOnFailure;
  host.faults.FailCall("m_fopen_hl", 1);
  EXPECT_FALSE(Compare());
  Files expected = CopiesWith("", false);
  expected.erase("Job1_TmpSaveCompareInfo.txt");
  EXPECT_EQ(InKeepNow(), expected);
  EXPECT_EQ(InJobNow(), JobFilesWith(""));
  // The bands are opened all the same: the status is looked at behind that.
  EXPECT_THAT(host.events.Events(), Contains("m_fopen_hl QZTUTLA2 job\\ TmpCompareInfo.tmp rb"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CompareTest, TextThatTheHostCallsUnopenedIsStillWrittenWhenTheNextOpenIsGood) {
  host.faults.FailCall("m_fopen_hl status", 1);
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), true));
}

TEST_F(CompareTest, BandsThatAreMissingEndTheJobWithAnEmptyText) {
  RemoveFromJob("TmpCompareInfo.tmp");
  for (const StatusWrites writes : {StatusWrites::kOnEveryCall, StatusWrites::kOnlyOnFailure}) {
    host.statusWrites = writes;
    EXPECT_FALSE(Compare());
    Files expected = JobFilesWith("");
    expected.erase("TmpCompareInfo.tmp");
    EXPECT_EQ(InJobNow(), expected);
    EXPECT_EQ(InKeepNow(), CopiesWith("", false));
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(CompareTest, BandsThatTheHostCallsUnopenedEndTheJob) {
  host.faults.FailCall("m_fopen_hl status", 2);
  EXPECT_FALSE(Compare());
  ExpectEndedWithTheBands("");
  EXPECT_THAT(host.events.Only({"m_f"}), ElementsAreArray(Joined({kBandsOpened, kBandsClosed})));
}

TEST_F(CompareTest, BandsWithoutAStreamEndTheJobWhateverTheStatus) {
  host.statusWrites = StatusWrites::kNever;
  host.faults.FailCall("m_fopen_hl", 2);
  EXPECT_FALSE(Compare());
  ExpectEndedWithTheBands("");
}

TEST_F(CompareTest, HostThatNeverWritesTheStatusWillDo) {
  host.statusWrites = StatusWrites::kNever;
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InKeepNow(), CopiesWith(support::TwoBandsText(), true));
}

// The bands

TEST_F(CompareTest, WithoutDivisionsTheResultIsFalseAndTheTextEmpty) {
  support::Bands bands = support::TwoBands();
  bands.divisions = 0;
  WriteBands(bands);
  EXPECT_FALSE(Compare());
  ExpectEndedWithTheBands("");
  EXPECT_THAT(host.events.Only({"m_f"}), ElementsAreArray(Joined({kBandsOpened, kBandsClosed})));
}

TEST_F(CompareTest, BandsCutInFrontOfTheColoursEndTheJob) {
  const std::string whole = support::CompareInfoBytes(support::TwoBands());
  for (std::size_t length = 0; length < 8; ++length) {
    SCOPED_TRACE(length);
    WriteInfo(whole.substr(0, length));
    EXPECT_FALSE(Compare());
    ExpectEndedWithTheBands("");
  }
}

TEST_F(CompareTest, BandsCutBehindThatAreComparedWithZeros) {
  WriteInfo(support::CompareInfoBytes({7, 2, {3}, {}}));
  EXPECT_TRUE(Compare());
  EXPECT_EQ(kernel.bands, (support::Bands{7, 2, {3, 0}, {0, 0}}));
  EXPECT_EQ(InKeepNow(), CopiesWith("Stock model color 7\n"
                                    "Number of divisions 2\n"
                                    "Color[0] = 3\n"
                                    "Color[1] = 0\n"
                                    "Distance[0] =         0.0000000000\n"
                                    "Distance[1] =         0.0000000000\n",
                                    true));
}

TEST_F(CompareTest, WithoutMemoryForTheBandsTheJobEnds) {
  for (int k = 1; k <= 2; ++k) {
    host.faults = {};
    host.faults.FailCall("new", k);
    EXPECT_FALSE(Compare());
    ExpectEndedWithTheBands("");
  }
}

TEST_F(CompareTest, ColoursBeyond256EndTheJobWithAnEmptyText) {
  const std::vector<support::Bands> refused = {{257, 2, {3, 4}, {0, 1}},
                                               {-1, 2, {3, 4}, {0, 1}},
                                               {7, 2, {257, 4}, {0, 1}},
                                               {7, 2, {3, 257}, {0, 1}},
                                               {7, 2, {3, 0xFFFFFFFF}, {0, 1}}};
  for (const support::Bands& bands : refused) {
    WriteBands(bands);
    EXPECT_FALSE(Compare());
    ExpectEndedWithTheBands("");
  }
}

TEST_F(CompareTest, Colour256IsAColour) {
  WriteBands({256, 1, {256}, {0.5}});
  EXPECT_TRUE(Compare());
  EXPECT_EQ(kernel.bands, (support::Bands{256, 1, {256}, {0.5}}));
}

TEST_F(CompareTest, BandsAreClosedBeforeTheirTextIsWritten) {
  std::vector<std::string> open;
  host.faults.RunAt("fwrite", 1, [&] { open = host.OpenStreams(); });
  EXPECT_TRUE(Compare());
  EXPECT_THAT(open, ElementsAre("QZTUTLA2 keep\\Job1_TmpSaveCompareInfo.txt"));
}

TEST_F(CompareTest, FullDiskForTheTextDoesNotMatter) {
  host.faults.FailCall("fwrite", 1);
  EXPECT_TRUE(Compare());
  EXPECT_EQ(InKeepNow(), CopiesWith("", true));
  EXPECT_EQ(InJobNow(), JobFilesWith(ResultBytes()));
}

}  // namespace
}  // namespace compare_test
