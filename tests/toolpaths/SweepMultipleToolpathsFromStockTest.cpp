#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/Attempt.h"
#include "support/FileBuilder.h"
#include "support/JobEvents.h"
#include "support/SweepJobTest.h"
#include "toolpaths/SweepMultipleToolpathsFromStock.h"

namespace {

using support::Events;
using support::Joined;
using support::PathsConverted;
using support::RegistryAsked;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kOutput = "StockModelOutput.tmp";

const Events kPathsCombined = {"m_fopen_hl QZTUTLA2 job\\ job\\BinaryPaths.tmp wb",
                               "exists job\\TmpPathInfo0.tmp",
                               "exists job\\TmpPathInfo1.tmp",
                               "m_fopen_hl QZTUTLA2 job\\ TmpPathInfo0.tmp rb",
                               "m_fclose QZTUTLA2 job\\TmpPathInfo0.tmp",
                               "m_fclose QZTUTLA2 job\\BinaryPaths.tmp"};
const Events kInputsCopied = {"exists job\\BinaryPaths.txt",
                              "copy job\\BinaryPaths.txt -> keep\\Job1_TmpSaveBinaryPaths.txt",
                              "exists job\\BinaryPaths.tmp",
                              "copy job\\BinaryPaths.tmp -> keep\\Job1_TmpSaveBinaryPaths.tmp",
                              "exists job\\StockModelInput.tmp",
                              "copy job\\StockModelInput.tmp -> keep\\Job1_TmpSaveInputStock.iff",
                              "exists job\\StockModelInput.tmp"};
const Events kOldOutputRemoved = {"exists job\\StockModelOutput.tmp",
                                  "remove job\\StockModelOutput.tmp"};
const Events kKernelMade = {"getcwd 256", "chdir job\\", "IFSweep()"};
const Events kStockLoaded =
    Joined({{"OpenStockChannel"}, support::FacetLoaded("stock", "job\\StockModelInput.tmp")});
const Events kRunBegun = Joined({{"m_fopen SurfaceXferQZ job\\StockModelOutput.tmp wb",
                                  "SetFiveAxisBufferingLevel 0", "Run job\\BinaryPaths.tmp"},
                                 support::FacetPlayed()});
const Events kRunEnded = {"output.Close", "m_fclose SurfaceXferQZ job\\StockModelOutput.tmp",
                          "Run ends"};
const Events kKernelGone = {"~IFSweep()", "chdir home"};
const Events kOutputCopied = {
    "exists job\\StockModelOutput.tmp",
    "copy job\\StockModelOutput.tmp -> keep\\Job1_TmpSaveOutputStock.iff"};
const Events kOutputMissed = {"exists job\\StockModelOutput.tmp"};
const Events kVerdict = {"exists job\\StockModelOutput.tmp"};

class SweepTest : public support::WithCallbacks<support::SweepJobTest> {
 protected:
  SweepTest() { KeepCopiesApart(); }

  bool Sweep() { return SweepMultipleToolpathsFromStock(WorkDir(), &callbacks); }

  std::string InJobBytes(const std::string& name) { return support::ReadWholeFile(InJob(name)); }
  std::string InKeepBytes(const std::string& name) { return support::ReadWholeFile(InKeep(name)); }
};

TEST_F(SweepTest, WholeOrderOfEffectsOfASuccessfulSweep) {
  WriteStaleOutput();
  EXPECT_TRUE(Sweep());
  EXPECT_THAT(
      host.events.Events(),
      ElementsAreArray(Joined({kPathsCombined, PathsConverted(), RegistryAsked(), kInputsCopied,
                               kOldOutputRemoved, kKernelMade, kStockLoaded, kRunBegun, kRunEnded,
                               kKernelGone, kOutputCopied, kVerdict})));
}

TEST_F(SweepTest, WholeOrderOfEffectsOfAKernelErrorDuringTheRun) {
  WriteStaleOutput();
  kernel.At("output.AddTriangle", support::ScriptedKernel::Progress("Sweeping", 3));
  progress.cancelFrom = 1;
  EXPECT_FALSE(Sweep());
  // Close writes and closes what the channel holds; then the file goes, then the kernel.
  const Events discarded = {"m_fclose SurfaceXferQZ job\\StockModelOutput.tmp",
                            "remove job\\StockModelOutput.tmp"};
  EXPECT_THAT(
      host.events.Events(),
      ElementsAreArray(Joined({kPathsCombined, PathsConverted(), RegistryAsked(), kInputsCopied,
                               kOldOutputRemoved, kKernelMade, kStockLoaded, kRunBegun,
                               support::Cancelled(44), discarded, kKernelGone, kOutputMissed})));
}

TEST_F(SweepTest, WholeOrderOfEffectsOfAKernelErrorInTheConstructor) {
  WriteStaleOutput();
  kernel.AtCall(1, support::ScriptedKernel::Progress("Sweeping", 3));
  progress.cancelFrom = 1;
  EXPECT_FALSE(Sweep());
  const Events discarded = {"remove job\\StockModelOutput.tmp fails", "chdir home"};
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined({kPathsCombined, PathsConverted(), RegistryAsked(),
                                       kInputsCopied, kOldOutputRemoved, kKernelMade,
                                       support::Cancelled(44), discarded, kOutputMissed})));
}

TEST_F(SweepTest, ResultIsWhatTheKernelPlayed) {
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes(kOutput), ExpectedOutput());
  EXPECT_EQ(kernel.stock, support::OneFacet(1, 5));
  EXPECT_EQ(kernel.LivingObjects(), 0);
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
  EXPECT_TRUE(IsAtHome());
}

TEST_F(SweepTest, FilesOfAJobAfterASweep) {
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes("BinaryPaths.tmp"), support::InterchangeBytes({support::Path()}));
  EXPECT_EQ(InJobBytes("StockModelInput.tmp"),
            support::BinarySurfaceBytes(support::OneFacet(1, 5)));
  EXPECT_EQ(InJobBytes("TmpPathInfo0.tmp"), support::PathInfoBytes(support::Path()));
  EXPECT_EQ(InKeepBytes("Job1_TmpSaveBinaryPaths.txt"), InJobBytes("BinaryPaths.txt"));
  EXPECT_EQ(InKeepBytes("Job1_TmpSaveBinaryPaths.tmp"), InJobBytes("BinaryPaths.tmp"));
  EXPECT_EQ(InKeepBytes("Job1_TmpSaveInputStock.iff"), InJobBytes("StockModelInput.tmp"));
  EXPECT_EQ(InKeepBytes("Job1_TmpSaveOutputStock.iff"), ExpectedOutput());
  EXPECT_THAT(support::NamesIn(InJob("")),
              ElementsAre("BinaryPaths.tmp", "BinaryPaths.txt", "StockModelInput.tmp", kOutput,
                          "TmpPathInfo0.tmp"));
}

TEST_F(SweepTest, WithoutARegistryValueTheCopiesLieBesideTheFiles) {
  host.stockDataDirectory.reset();
  EXPECT_TRUE(Sweep());
  EXPECT_THAT(support::NamesIn(InJob("")),
              ElementsAre("BinaryPaths.tmp", "BinaryPaths.txt", "Job1_TmpSaveBinaryPaths.tmp",
                          "Job1_TmpSaveBinaryPaths.txt", "Job1_TmpSaveInputStock.iff",
                          "Job1_TmpSaveOutputStock.iff", "StockModelInput.tmp", kOutput,
                          "TmpPathInfo0.tmp"));
}

TEST_F(SweepTest, CopiesThatCannotBeMadeDoNotMatter) {
  host.faults.FailFrom("CopyFileA", 1);
  EXPECT_TRUE(Sweep());
  EXPECT_THAT(support::NamesIn(InKeep("")), IsEmpty());
}

TEST_F(SweepTest, KernelRunsInTheWorkingDirectory) {
  bool inJob = false;
  kernel.At("Run", [&](UIDialog&) { inJob = IsInJob(); });
  EXPECT_TRUE(Sweep());
  EXPECT_TRUE(inJob);
}

TEST_F(SweepTest, DirectoryThatCannotBeEnteredIsNoError) {
  host.faults.FailCall("SetCurrentDirectoryA", 1);
  EXPECT_TRUE(Sweep());
  EXPECT_TRUE(IsAtHome());
}

TEST_F(SweepTest, WithoutPathFilesTheKernelRunsWithAnEmptyList) {
  std::filesystem::remove(InJob("TmpPathInfo0.tmp"));
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes("BinaryPaths.tmp"), support::InterchangeBytes({}));
  EXPECT_THAT(host.events.Events(), Contains("Run job\\BinaryPaths.tmp"));
}

TEST_F(SweepTest, PathsThatCannotBeCombinedEndTheJobBeforeAnythingElse) {
  support::WriteWholeFile(InJob("TmpPathInfo0.tmp"), "too short");
  WriteStaleOutput();
  EXPECT_FALSE(Sweep());
  EXPECT_TRUE(HasStaleOutput());
  EXPECT_FALSE(JobHas("BinaryPaths.txt"));
  EXPECT_THAT(support::NamesIn(InKeep("")), IsEmpty());
  EXPECT_THAT(host.events.Only({"fopen", "get_REG_KEY", "chdir", "IFSweep", "remove"}), IsEmpty());
}

TEST_F(SweepTest, PathsThatDoNotConvertAreNeverSwept) {
  support::Path path;
  path.positions.clear();  // combines, but a cut without positions is invalid
  WritePath(0, path);
  WriteStaleOutput();
  EXPECT_FALSE(Sweep());
  EXPECT_TRUE(HasStaleOutput());
  EXPECT_TRUE(JobHas("BinaryPaths.txt"));
  EXPECT_THAT(support::NamesIn(InKeep("")), IsEmpty());
  EXPECT_THAT(host.events.Only({"get_REG_KEY", "chdir", "IFSweep", "remove"}), IsEmpty());
}

TEST_F(SweepTest, UndercutToolIsSweptOnlyWhenWhatFollowsHappensToReadAsItsBlock) {
  support::Path path;
  path.tool = support::UndercutBlock{};
  WritePath(0, path);
  EXPECT_FALSE(Sweep());
  EXPECT_THAT(host.events.Only({"IFSweep"}), IsEmpty());
}

TEST_F(SweepTest, UndercutToolWhosePositionsReadAsABlockAndACutIsSwept) {
  // Behind the tool type come 1 cut and the number of positions: 8 bytes that the converter takes
  // for the arm radius. Then 13 doubles and 2 flags, 106 bytes of the block, are taken out of the
  // positions, and the integers behind them must read as 1 cut with 1 position.
  support::FileBuilder positions;
  for (int i = 0; i < 13; ++i) positions.Double(0);
  positions.Uint8(0).Uint8(0).Uint32(1).Uint32(1).Doubles({1, 2, 3});
  positions.Text("      ");  // fills the last record of three doubles
  support::Path path;
  path.tool = support::UndercutBlock{};
  support::WriteWholeFile(InJob("TmpPathInfo0.tmp"),
                          support::PathInfoHeadBytes(path) + positions.Bytes());
  EXPECT_TRUE(Sweep());
  EXPECT_THAT(host.events.Events(), Contains("Run job\\BinaryPaths.tmp"));
}

TEST_F(SweepTest, WithoutAStockAStaleOutputDecidesAndStays) {
  std::filesystem::remove(InJob("StockModelInput.tmp"));
  WriteStaleOutput();
  EXPECT_TRUE(Sweep());
  EXPECT_TRUE(HasStaleOutput());
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(
                  Joined({kPathsCombined,
                          PathsConverted(),
                          RegistryAsked(),
                          {"exists job\\BinaryPaths.txt",
                           "copy job\\BinaryPaths.txt -> keep\\Job1_TmpSaveBinaryPaths.txt",
                           "exists job\\BinaryPaths.tmp",
                           "copy job\\BinaryPaths.tmp -> keep\\Job1_TmpSaveBinaryPaths.tmp",
                           "exists job\\StockModelInput.tmp", "exists job\\StockModelInput.tmp"},
                          kVerdict})));
}

TEST_F(SweepTest, WithoutStockAndOutputTheResultIsFalse) {
  std::filesystem::remove(InJob("StockModelInput.tmp"));
  EXPECT_FALSE(Sweep());
  EXPECT_THAT(host.events.Only({"IFSweep", "chdir", "remove"}), IsEmpty());
}

TEST_F(SweepTest, StockThatDoesNotLoadIsNotRunAndTheOldOutputIsGone) {
  support::WriteWholeFile(InJob("StockModelInput.tmp"), "binary surface, but no more");
  WriteStaleOutput();
  EXPECT_FALSE(Sweep());
  EXPECT_FALSE(JobHas(kOutput));
  EXPECT_THAT(host.events.Events(), Not(Contains("Run job\\BinaryPaths.tmp")));
  EXPECT_THAT(host.events.Events(), Contains("~IFSweep()"));
  EXPECT_TRUE(IsAtHome());
  EXPECT_TRUE(std::filesystem::exists(InKeep("Job1_TmpSaveInputStock.iff")));
}

TEST_F(SweepTest, StockThatDoesNotLoadAndAnOldOutputThatStaysAreASuccess) {
  support::WriteWholeFile(InJob("StockModelInput.tmp"), "binary surface, but no more");
  WriteStaleOutput();
  host.faults.FailCall("remove", 1);
  EXPECT_TRUE(Sweep());
  EXPECT_TRUE(HasStaleOutput());
}

TEST_F(SweepTest, OldOutputThatCannotBeRemovedIsOverwritten) {
  WriteStaleOutput();
  host.faults.FailCall("remove", 1);
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes(kOutput), ExpectedOutput());
}

TEST_F(SweepTest, OutputThatTheKernelNeverClosedHoldsItsHeaderOnly) {
  kernel.closesOutput = false;
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes(kOutput), "binary surface");
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(SweepTest, ChannelIsDestroyedBeforeTheKernel) {
  kernel.closesOutput = false;
  EXPECT_TRUE(Sweep());
  EXPECT_THAT(
      host.events.Only({"m_fclose SurfaceXferQZ", "Run ends", "~IFSweep"}),
      ElementsAre("Run ends", "m_fclose SurfaceXferQZ job\\StockModelOutput.tmp", "~IFSweep()"));
}

TEST_F(SweepTest, OutputThatCannotBeCreatedMakesTheResultFalse) {
  host.faults.FailCall("m_fopen", 2);
  EXPECT_FALSE(Sweep());
  EXPECT_FALSE(JobHas(kOutput));
}

TEST_F(SweepTest, DiskFullWhileTheOutputIsWrittenMakesTheResultFalse) {
  EXPECT_TRUE(Sweep());
  const auto all = host.faults.BytesWritten();
  host.faults.LimitDisk(all - 1);
  EXPECT_FALSE(Sweep());
  EXPECT_FALSE(JobHas(kOutput));
}

TEST_F(SweepTest, EmptyResultIsAResult) {
  kernel.result = {};
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes(kOutput),
            support::FileBuilder().Text("binary surface").Int32(0).Int32(0).Bytes());
}

TEST_F(SweepTest, WarningsDoNotDisturbTheRun) {
  kernel.At("Run", support::ScriptedKernel::Warning("odd"));
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes(kOutput), ExpectedOutput());
}

TEST_F(SweepTest, PathsAreGatheredFromTheNumberedFilesUpToTheFirstGap) {
  support::Path second;
  second.colour = 8;
  WritePath(1, second);
  WritePath(3, second);
  EXPECT_TRUE(Sweep());
  EXPECT_EQ(InJobBytes("BinaryPaths.tmp"), support::InterchangeBytes({support::Path(), second}));
}

// The channel keeps 255 characters of its file's name. What it writes lies under another name than
// the one that is looked for; that is a failure, and it is left there.
TEST_F(SweepTest, OutputWhoseNameIsCutIsNotFoundAndTheResultIsFalse) {
  constexpr std::size_t kCut = 255;
  const support::TempDirectory root;
  std::string name(kCut - 15 - support::AddinSpelling(root.Path()).size() - 1, 'd');
  const auto deep = root.Sub(name);
  const std::string workDir = support::AddinSpelling(deep);
  ASSERT_EQ(workDir.size(), kCut - 15);
  for (const char* file : {"TmpPathInfo0.tmp", "StockModelInput.tmp"}) {
    support::WriteWholeFile(deep / file, InJobBytes(file));
  }
  host.stockDataDirectory = support::AddinSpelling(InKeep(""));
  EXPECT_FALSE(SweepMultipleToolpathsFromStock(workDir.c_str(), &callbacks));
  EXPECT_EQ(support::ReadWholeFile(deep / "StockModelOutpu"), ExpectedOutput());
  EXPECT_FALSE(std::filesystem::exists(deep / kOutput));
  EXPECT_TRUE(IsAtHome());
}

}  // namespace
