// A compression step by step: the order of its effects, and all files after every way through.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "stock/StockModelCompress.h"
#include "support/Attempt.h"
#include "support/CompressJobTest.h"
#include "support/FileBuilder.h"
#include "support/JobEvents.h"

namespace {

using support::Events;
using support::Joined;
using support::PathsConverted;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kHeaderOnly = "binary surface";

const Events kOldOutputRemoved = {"exists job\\out.iff", "remove job\\out.iff"};
const Events kInputOpened = {"m_fopen_hl QZTUTLA2 job\\ in.iff rb"};
const Events kInputClosed = {"m_fclose QZTUTLA2 job\\in.iff"};
const Events kPathWritten = {"m_fopen_hl QZTUTLA2 job\\ job\\BinaryPaths.tmp wb", "IsMetric",
                             "m_fclose QZTUTLA2 job\\BinaryPaths.tmp"};
const Events kKernelMade = {"getcwd 256", "chdir job\\", "IFSweep()", "OpenStockChannel"};
// By its bare name: the working directory is the current one by now.
const Events kStockLoaded = support::FacetLoaded("stock", "in.iff");
// Five-axis buffering is not touched.
const Events kRunBegun =
    Joined({{"m_fopen SurfaceXferQZ job\\out.iff wb", "Run job\\BinaryPaths.tmp"},
            support::FacetPlayed()});
const Events kRunEnded = {"output.Close", "m_fclose SurfaceXferQZ job\\out.iff", "Run ends"};
const Events kKernelGone = {"~IFSweep()", "chdir home"};
const Events kVerdict = {"exists job\\out.iff"};

class CompressTest : public support::WithCallbacks<support::CompressJobTest> {
 protected:
  bool Compress() { return CompressTo(OutputName()); }
  bool CompressTo(const CString& outputName) {
    return StockModelCompress(WorkDir(), "in.iff", outputName, &callbacks, kTolerance);
  }

  // Ended before the kernel and the change of directory; `made` is left of it beside the input.
  void ExpectEndedEarlyWith(Files made) {
    made.merge(InputFile());
    EXPECT_EQ(FilesInJob(), made);
    EXPECT_THAT(kernel.CallNames(), IsEmpty());
    EXPECT_THAT(host.events.Only({"getcwd", "chdir"}), IsEmpty());
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
};

TEST_F(CompressTest, WholeOrderOfEffectsOfASuccess) {
  EXPECT_TRUE(Compress());
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined({kOldOutputRemoved, kInputOpened, kInputClosed, kPathWritten,
                                       PathsConverted(), kKernelMade, kStockLoaded, kRunBegun,
                                       kRunEnded, kKernelGone, kVerdict})));
}

TEST_F(CompressTest, WholeOrderOfEffectsOfAKernelErrorDuringTheRun) {
  kernel.At("output.AddTriangle", support::ScriptedKernel::Progress("Sweeping", 3));
  progress.cancelFrom = 1;
  EXPECT_FALSE(Compress());
  // Close writes and closes what the channel holds; then the file goes, then the kernel.
  const Events discarded = {"m_fclose SurfaceXferQZ job\\out.iff", "remove job\\out.iff"};
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined({kOldOutputRemoved, kInputOpened, kInputClosed, kPathWritten,
                                       PathsConverted(), kKernelMade, kStockLoaded, kRunBegun,
                                       support::Cancelled(44), discarded, kKernelGone})));
}

TEST_F(CompressTest, WholeOrderOfEffectsOfAKernelErrorBeforeThereIsAChannel) {
  kernel.At("OpenStockChannel", support::ScriptedKernel::Progress("Sweeping", 3));
  progress.cancelFrom = 1;
  EXPECT_FALSE(Compress());
  const Events discarded = {"remove job\\out.iff fails"};
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined({kOldOutputRemoved, kInputOpened, kInputClosed, kPathWritten,
                                       PathsConverted(), kKernelMade, support::Cancelled(44),
                                       discarded, kKernelGone})));
}

TEST_F(CompressTest, FilesAfterASuccess) {
  EXPECT_TRUE(Compress());
  EXPECT_EQ(FilesInJob(), InputPathAnd(ResultBytes()));
  EXPECT_THAT(support::NamesIn(InKeep("")), IsEmpty());
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
  EXPECT_TRUE(IsAtHome());
}

TEST_F(CompressTest, KernelGetsTheStockAndRunsInTheWorkingDirectory) {
  bool inJob = false;
  kernel.At("Run", [&](UIDialog&) { inJob = IsInJob(); });
  EXPECT_TRUE(Compress());
  EXPECT_TRUE(inJob);
  EXPECT_EQ(support::BinarySurfaceBytes(kernel.stock), InputBytes());
}

TEST_F(CompressTest, NoDiagnosticCopiesAreMade) {
  KeepCopiesApart();
  EXPECT_TRUE(Compress());
  EXPECT_THAT(host.events.Only({"copy", "get_REG_KEY"}), IsEmpty());
}

TEST_F(CompressTest, InInchesThePathIsTheInchOne) {
  host.metric = false;
  EXPECT_TRUE(Compress());
  support::FileBuilder file;
  file.Text("binary toolpaths").Int32(0).Uint32(1).Int32(1).Int32(0);
  file.Doubles({0.001, 0.001, kTolerance}).Doubles({1, 0, 0, 0, 1, 0, 0, 0, 1});
  file.Doubles({0, 0, 0}).Int32(1).Doubles({0, 1, 0, 90, 0, 0}).Uint32(1).Uint32(2);
  file.Doubles({4, 5, 8.5, 4, 5, 8.5});
  EXPECT_EQ(support::ReadWholeFile(InJob("BinaryPaths.tmp")), file.Bytes());
}

TEST_F(CompressTest, PathLiesTenTolerancesAboveTheFirstOfTheHighestVertices) {
  WriteInput(support::BinarySurfaceBytes({{{1, 1, 2}, {2, 3, 20}, {5, 6, 20}}, {{{1, 2, 3}, 5}}}));
  EXPECT_TRUE(StockModelCompress(WorkDir(), "in.iff", OutputName(), &callbacks, 0.01));
  EXPECT_EQ(support::ReadWholeFile(InJob("BinaryPaths.tmp")), PathBytes(0.01, {2, 3, 20.1}));
}

TEST_F(CompressTest, WithoutATolerancePathTouchesTheHighestVertex) {
  EXPECT_TRUE(StockModelCompress(WorkDir(), "in.iff", OutputName(), &callbacks, 0.0));
  EXPECT_EQ(support::ReadWholeFile(InJob("BinaryPaths.tmp")), PathBytes(0.0, {4, 5, 6}));
}

TEST_F(CompressTest, WithoutAnOldOutputNothingIsRemoved) {
  std::filesystem::remove(InJob("out.iff"));
  EXPECT_TRUE(Compress());
  EXPECT_THAT(host.events.Only({"remove"}), IsEmpty());
}

TEST_F(CompressTest, OldOutputThatCannotBeRemovedIsOverwritten) {
  host.faults.FailCall("remove", 1);
  EXPECT_TRUE(Compress());
  EXPECT_EQ(FilesInJob(), InputPathAnd(ResultBytes()));
}

// The input

TEST_F(CompressTest, InputThatIsMissingIsFalseAndTheOldOutputGone) {
  std::filesystem::remove(InJob("in.iff"));
  EXPECT_FALSE(Compress());
  EXPECT_THAT(support::NamesIn(InJob("")), IsEmpty());
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined(
                  {kOldOutputRemoved, {"m_fopen_hl QZTUTLA2 job\\ in.iff rb fails"}, kVerdict})));
}

TEST_F(CompressTest, InputThatIsMissingAndAnOldOutputThatStaysAreASuccess) {
  std::filesystem::remove(InJob("in.iff"));
  host.faults.FailCall("remove", 1);
  EXPECT_TRUE(Compress());
  EXPECT_EQ(support::ReadWholeFile(InJob("out.iff")), "what an earlier job left");
}

TEST_F(CompressTest, InputThatTheHostCallsUnopenedIsNotRead) {
  host.faults.FailCall("m_fopen_hl status", 1);
  EXPECT_FALSE(Compress());
  ExpectEndedEarlyWith({});
  EXPECT_EQ(host.faults.Calls("fread"), 0);
}

TEST_F(CompressTest, InputWhoseStatusTheHostDoesNotWriteIsNotRead) {
  using StatusWrites = support::TestHost::StatusWrites;
  for (const StatusWrites writes : {StatusWrites::kOnlyOnFailure, StatusWrites::kNever}) {
    host.statusWrites = writes;
    EXPECT_FALSE(Compress());
    ExpectEndedEarlyWith({});
    EXPECT_EQ(host.faults.Calls("fread"), 0);
  }
}

TEST_F(CompressTest, InputWithoutAStreamIsNotReadWhateverTheStatus) {
  host.statusWrites = support::TestHost::StatusWrites::kTrueWhateverHappened;
  host.faults.FailCall("m_fopen_hl", 1);
  EXPECT_FALSE(Compress());
  ExpectEndedEarlyWith({});
}

TEST_F(CompressTest, InputCutInFrontOfItsTrianglesWritesNoPath) {
  const std::string whole = InputBytes();
  for (std::size_t length = 0; length < 22 + 3 * 24; ++length) {
    SCOPED_TRACE(length);
    WriteInput(whole.substr(0, length));
    EXPECT_FALSE(Compress());
    ExpectEndedEarlyWith({});
  }
}

TEST_F(CompressTest, InputThatCannotBeReadIsClosedBehindTheVerdict) {
  WriteInput("binary surface, but no more");
  EXPECT_FALSE(Compress());
  EXPECT_THAT(host.events.Events(),
              ElementsAreArray(Joined({kOldOutputRemoved, kInputOpened, kVerdict, kInputClosed})));
}

TEST_F(CompressTest, InputWithoutVerticesWritesNoPath) {
  for (const std::int32_t count : {0, -1}) {
    support::FileBuilder file;
    WriteInput(file.Text("binary surface").Int32(count).Int32(1).Doubles({1, 2, 3}).Bytes());
    EXPECT_FALSE(Compress());
    ExpectEndedEarlyWith({});
  }
}

TEST_F(CompressTest, HeaderOfTheInputIsNotLookedAt) {
  WriteInput("another header" + InputBytes().substr(14));
  EXPECT_TRUE(Compress());
  EXPECT_EQ(FilesInJob(), InputPathAnd(ResultBytes()));
}

TEST_F(CompressTest, TriangleCountIsNoticedWhenTheStockIsLoaded) {
  std::string bytes = InputBytes();
  bytes.replace(18, 4, std::string(4, '\0'));
  WriteInput(bytes);
  EXPECT_FALSE(Compress());
  EXPECT_EQ(FilesInJob(), InputAndPath());
  EXPECT_THAT(host.events.Events(), ElementsAreArray(Joined({kOldOutputRemoved,
                                                             kInputOpened,
                                                             kInputClosed,
                                                             kPathWritten,
                                                             PathsConverted(),
                                                             kKernelMade,
                                                             {"m_fopen QZTUTLA2 in.iff rb"},
                                                             {"m_fclose QZTUTLA2 in.iff"},
                                                             kKernelGone,
                                                             kVerdict})));
}

TEST_F(CompressTest, InputThatIsTheOutputIsLost) {
  EXPECT_FALSE(CompressTo(WorkDir() + "in.iff"));
  EXPECT_FALSE(JobHas("in.iff"));
}

// The path

TEST_F(CompressTest, PathThatCannotBeOpenedEndsTheJob) {
  host.faults.FailCall("m_fopen_hl", 2);
  EXPECT_FALSE(Compress());
  ExpectEndedEarlyWith({});
}

TEST_F(CompressTest, PathThatCannotBeWrittenEndsTheJobWithWhatFitted) {
  host.faults.LimitDisk(100);
  EXPECT_FALSE(Compress());
  ExpectEndedEarlyWith({{"BinaryPaths.tmp", JobPathBytes().substr(0, 100)}});
}

TEST_F(CompressTest, PathThatCannotBeConvertedEndsTheJob) {
  host.faults.FailCall("fopen", 2);
  EXPECT_FALSE(Compress());
  ExpectEndedEarlyWith({{"BinaryPaths.tmp", JobPathBytes()}});
}

// The output

TEST_F(CompressTest, OutputExistsAsSoonAsItsChannelDoesWhateverTheKernelPlays) {
  kernel.closesOutput = false;
  EXPECT_TRUE(Compress());
  EXPECT_EQ(FilesInJob(), InputPathAnd(kHeaderOnly));
  EXPECT_THAT(host.events.Only({"m_fclose SurfaceXferQZ", "Run ends", "~IFSweep"}),
              ElementsAre("Run ends", "m_fclose SurfaceXferQZ job\\out.iff", "~IFSweep()"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(CompressTest, EmptyResultIsAResult) {
  kernel.result = {};
  EXPECT_TRUE(Compress());
  EXPECT_EQ(FilesInJob(),
            InputPathAnd(support::FileBuilder().Text("binary surface").Int32(0).Int32(0).Bytes()));
}

TEST_F(CompressTest, OutputThatCannotBeCreatedIsFalseAlthoughTheKernelRuns) {
  host.faults.FailCall("m_fopen", 2);
  EXPECT_FALSE(Compress());
  EXPECT_EQ(FilesInJob(), InputAndPath());
  EXPECT_THAT(kernel.CallNames(), Contains("Run ends"));
}

TEST_F(CompressTest, DiskFullWhileTheOutputIsWrittenIsFalse) {
  EXPECT_TRUE(Compress());
  host.faults.LimitDisk(host.faults.BytesWritten() - 1);
  EXPECT_FALSE(Compress());
  EXPECT_EQ(FilesInJob(), InputAndPath());
}

TEST_F(CompressTest, FiveAxisBufferingIsLeftAlone) {
  EXPECT_TRUE(Compress());
  EXPECT_THAT(kernel.CallNames(), Not(Contains("SetFiveAxisBufferingLevel")));
}

// A relative name of the output means a file in the caller's directory at the beginning and at the
// end, and a file in the working directory in between.

TEST_F(CompressTest, RelativeOutputIsRemovedAndMissedInTheCallersDirectoryAndMadeInTheJobs) {
  std::filesystem::current_path(InKeep(""));
  support::WriteWholeFile(InKeep("out.iff"), "the caller's");
  EXPECT_FALSE(CompressTo("out.iff"));
  EXPECT_THAT(support::NamesIn(InKeep("")), IsEmpty());
  EXPECT_EQ(FilesInJob(), InputPathAnd(ResultBytes()));
  EXPECT_THAT(host.events.Only({"exists", "remove", "chdir", "m_fopen Surf"}),
              ElementsAre("exists out.iff", "remove out.iff", "chdir job\\",
                          "m_fopen SurfaceXferQZ out.iff wb", "chdir keep", "exists out.iff"));
}

TEST_F(CompressTest, RelativeOutputIsASuccessWhenTheCallerIsInTheWorkingDirectory) {
  std::filesystem::current_path(InJob(""));
  EXPECT_TRUE(CompressTo("out.iff"));
  EXPECT_EQ(FilesInJob(), InputPathAnd(ResultBytes()));
}

TEST_F(CompressTest, KernelErrorRemovesARelativeOutputFromTheWorkingDirectory) {
  std::filesystem::current_path(InKeep(""));
  kernel.At("Run", support::ScriptedKernel::Progress("Sweeping", 3));
  progress.cancelFrom = 1;
  EXPECT_FALSE(CompressTo("out.iff"));
  EXPECT_EQ(FilesInJob(), InputAndPath());
}

TEST_F(CompressTest, KernelErrorIsAFailureAlsoWhenTheCallerHasAFileOfThatName) {
  std::filesystem::current_path(InKeep(""));
  kernel.At("Run", [&](UIDialog& dialog) {
    support::WriteWholeFile(InKeep("out.iff"), "made meanwhile");
    support::ScriptedKernel::Fatal("no way on")(dialog);
  });
  EXPECT_FALSE(CompressTo("out.iff"));
  EXPECT_EQ(support::ReadWholeFile(InKeep("out.iff")), "made meanwhile");
}

TEST_F(CompressTest, KernelErrorIsAFailureAlsoWhenItsOutputCannotBeRemoved) {
  // What the channel holds by then is written.
  kernel.At("output.AddTriangle", support::ScriptedKernel::Progress("Sweeping", 3));
  progress.cancelFrom = 1;
  host.faults.FailCall("remove", 2);
  EXPECT_FALSE(Compress());
  EXPECT_EQ(FilesInJob(), InputPathAnd(support::BinarySurfaceBytes({kernel.result.vertices, {}})));
}

// The directory

TEST_F(CompressTest, DirectoryThatCannotBeEnteredIsNotNoticedBeforeTheInputIsMissed) {
  // The input's bare name means nothing in the caller's directory.
  host.faults.FailCall("SetCurrentDirectoryA", 1);
  EXPECT_FALSE(Compress());
  EXPECT_EQ(FilesInJob(), InputAndPath());
  EXPECT_TRUE(IsAtHome());
}

TEST_F(CompressTest, WarningsDoNotDisturbTheRun) {
  kernel.At("Run", support::ScriptedKernel::Warning("odd"));
  EXPECT_TRUE(Compress());
  EXPECT_EQ(support::ReadWholeFile(InJob("out.iff")), ResultBytes());
}

}  // namespace
