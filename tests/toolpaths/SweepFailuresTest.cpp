// The sweep with one thing going wrong, for every place where it can: each time the flag, the
// files, the directory and what is open must be as promised, and the next sweep must work.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Attempt.h"
#include "support/NothrowBlocks.h"
#include "support/SweepJobTest.h"
#include "toolpaths/SweepMultipleToolpathsFromStock.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kOutput = "StockModelOutput.tmp";
constexpr const char* kOutputCopy = "Job1_TmpSaveOutputStock.iff";

class Attempt : public support::Attempt<support::SweepJobTest> {
 public:
  Attempt() {
    KeepCopiesApart();
    WriteStaleOutput();
  }

  bool Run() {
    return RunWithCallbacks([&](UIDlgKernel* callbacks) {
      return SweepMultipleToolpathsFromStock(WorkDir(), callbacks);
    });
  }

  bool HasOutput() const { return JobHas(kOutput); }
  bool HasOutputCopy() const { return std::filesystem::exists(InKeep(kOutputCopy)); }
  bool HasErrorRecord() const { return JobHas("ErrorCapture.txt"); }
  std::string Output() const { return support::ReadWholeFile(InJob(kOutput)); }

  void ExpectNextSweepWorks() {
    progress.cancelFrom = 0;
    progress.cancelOnlyAt = 0;
    EXPECT_TRUE(Run());
    EXPECT_EQ(Output(), ExpectedOutput());
  }

  using SweepJobTest::ExpectedOutput;
  using SweepJobTest::HasStaleOutput;
};

// The loader leaves its stream to whoever throws through it.
std::vector<std::string> StreamsLeftBy(const std::string& kernelCall) {
  if (!kernelCall.starts_with("stock.")) return {};
  return {"QZTUTLA2 job\\StockModelInput.tmp"};
}

// And its handle array; everything else is given back.
std::size_t BlocksLeftBy(const std::string& kernelCall) {
  return kernelCall.starts_with("stock.") ? 1 : 0;
}

TEST(SweepFailures, FatalErrorAtEveryKernelCallRemovesTheOutput) {
  const auto calls = support::KernelCallsOf<Attempt>();
  ASSERT_EQ(calls.size(), 17u);
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE("fatal error in call " + std::to_string(k) + ", " + calls[k - 1]);
    Attempt attempt;
    attempt.kernel.AtCall(static_cast<int>(k), support::ScriptedKernel::Fatal("no way on"));
    EXPECT_FALSE(attempt.Run());
    EXPECT_FALSE(attempt.HasOutput());
    EXPECT_FALSE(attempt.HasOutputCopy());
    EXPECT_TRUE(attempt.HasErrorRecord());
    EXPECT_EQ(attempt.host.OpenStreams(), StreamsLeftBy(calls[k - 1]));
    EXPECT_EQ(support::TakeLostBlocks(), BlocksLeftBy(calls[k - 1]));
    EXPECT_EQ(attempt.kernel.CallNames().size(), k);
    attempt.ExpectTidy();
    attempt.ExpectNextSweepWorks();
  }
}

TEST(SweepFailures, CancelAtEveryNotificationRemovesTheOutputAndLeavesNoRecord) {
  // A kernel that reports progress inside every call: two notifications each.
  const auto calls = support::KernelCallsOf<Attempt>();
  const auto report = [&](Attempt& attempt) {
    for (const std::string& call : calls) {
      attempt.kernel.At(call, support::ScriptedKernel::Progress("Sweeping", 10));
    }
  };
  int notifications = 0;
  {
    Attempt attempt;
    report(attempt);
    EXPECT_TRUE(attempt.Run());
    notifications = attempt.progress.Questions();
  }
  ASSERT_EQ(notifications, 2 * static_cast<int>(calls.size()));
  for (int k = 1; k <= notifications; ++k) {
    SCOPED_TRACE("cancel at notification " + std::to_string(k));
    Attempt attempt;
    report(attempt);
    attempt.progress.cancelOnlyAt = k;
    EXPECT_FALSE(attempt.Run());
    EXPECT_EQ(attempt.progress.Questions(), k);
    EXPECT_FALSE(attempt.HasOutput());
    EXPECT_FALSE(attempt.HasOutputCopy());
    EXPECT_FALSE(attempt.HasErrorRecord());
    EXPECT_EQ(support::TakeLostBlocks(), BlocksLeftBy(calls[static_cast<std::size_t>(k - 1) / 2]));
    attempt.ExpectTidy();
    attempt.ExpectNextSweepWorks();
  }
}

TEST(SweepFailures, ForeignExceptionAtEveryKernelCallPassesOn) {
  const auto calls = support::KernelCallsOf<Attempt>();
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE("foreign exception in call " + std::to_string(k) + ", " + calls[k - 1]);
    Attempt attempt;
    attempt.kernel.AtCall(static_cast<int>(k), support::ScriptedKernel::Foreign());
    EXPECT_THROW(attempt.Run(), std::runtime_error);
    // Nothing is removed or copied on such a way out.
    EXPECT_FALSE(attempt.HasOutputCopy());
    EXPECT_THAT(attempt.host.events.Only({"remove"}),
                ElementsAre("remove job\\StockModelOutput.tmp"));
    EXPECT_EQ(attempt.host.OpenStreams(), StreamsLeftBy(calls[k - 1]));
    EXPECT_EQ(support::TakeLostBlocks(), BlocksLeftBy(calls[k - 1]));
    attempt.ExpectTidy();
    attempt.ExpectNextSweepWorks();
  }
}

TEST(SweepFailures, KernelErrorThatIsNotRemovedFromDiskIsStillCopiedButFails) {
  Attempt attempt;
  attempt.kernel.At("Run ends", support::ScriptedKernel::Fatal("too late"));
  attempt.host.faults.FailFrom("remove", 2);
  EXPECT_FALSE(attempt.Run());
  EXPECT_TRUE(attempt.HasOutputCopy());
  attempt.ExpectTidy();
}

class SweepOpenFailures : public ::testing::TestWithParam<support::TestHost::StatusWrites> {};

TEST_P(SweepOpenFailures, EachTrackedOpenOfThePathFilesFailingEndsTheJob) {
  for (int k = 1; k <= 2; ++k) {
    SCOPED_TRACE("m_fopen_hl " + std::to_string(k));
    Attempt attempt;
    attempt.host.statusWrites = GetParam();
    attempt.host.faults.FailCall("m_fopen_hl", k);
    EXPECT_FALSE(attempt.Run());
    EXPECT_TRUE(attempt.HasStaleOutput());
    EXPECT_TRUE(attempt.kernel.CallNames().empty());
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    EXPECT_FALSE(attempt.JobHas("BinaryPaths.txt"));
    attempt.ExpectTidy();
    attempt.ExpectNextSweepWorks();
  }
}

TEST_P(SweepOpenFailures, OpenThatTheHostCallsUndoneIsUndone) {
  for (int k = 1; k <= 2; ++k) {
    SCOPED_TRACE("status of m_fopen_hl " + std::to_string(k));
    Attempt attempt;
    attempt.host.statusWrites = GetParam();
    attempt.host.faults.FailCall("m_fopen_hl status", k);
    EXPECT_FALSE(attempt.Run());
    EXPECT_TRUE(attempt.kernel.CallNames().empty());
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    attempt.ExpectNextSweepWorks();
  }
}

TEST_P(SweepOpenFailures, SweepWorksWhenEveryOpenDoes) {
  Attempt attempt;
  attempt.host.statusWrites = GetParam();
  EXPECT_EQ(attempt.host.faults.Calls("m_fopen_hl"), 0);
  attempt.ExpectNextSweepWorks();
  EXPECT_EQ(attempt.host.faults.Calls("m_fopen_hl"), 2);
}

INSTANTIATE_TEST_SUITE_P(BothHosts, SweepOpenFailures,
                         ::testing::Values(support::TestHost::StatusWrites::kOnEveryCall,
                                           support::TestHost::StatusWrites::kOnlyOnFailure));

// Calls whose failure must not be survived: without them there is no result to speak of.
class SweepFatalFaults : public ::testing::TestWithParam<const char*> {};

TEST_P(SweepFatalFaults, EachCallFailingInTurnLeavesNoWrongResult) {
  const std::string function = GetParam();
  const int calls = support::CallsOf<Attempt>(function);
  ASSERT_GT(calls, 0);
  for (int k = 1; k <= calls; ++k) {
    SCOPED_TRACE(function + " " + std::to_string(k) + " of " + std::to_string(calls));
    Attempt attempt;
    attempt.host.faults.FailCall(function, k);
    EXPECT_FALSE(attempt.Run());
    // Either the job ended before the old result was touched, or there is none.
    EXPECT_TRUE(attempt.HasStaleOutput() || !attempt.HasOutput());
    EXPECT_FALSE(attempt.HasOutputCopy());
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    attempt.ExpectTidy();
    attempt.ExpectNextSweepWorks();
  }
}

INSTANTIATE_TEST_SUITE_P(Functions, SweepFatalFaults,
                         ::testing::Values("fopen", "fread", "fwrite", "fflush", "fgetpos",
                                           "fsetpos", "m_fopen", "m_fopen_hl", "new"));

// Calls whose failure does not matter to the result: a registry that does not answer, a copy that
// is not made, an old result that is overwritten instead of removed, a directory that is not
// changed, data that is written although the stream complains when it is closed.
class SweepSurvivableFaults : public ::testing::TestWithParam<const char*> {};

TEST_P(SweepSurvivableFaults, EachCallFailingInTurnLeavesTheRightResult) {
  const std::string function = GetParam();
  const int calls = support::CallsOf<Attempt>(function);
  ASSERT_GT(calls, 0);
  for (int k = 1; k <= calls; ++k) {
    SCOPED_TRACE(function + " " + std::to_string(k) + " of " + std::to_string(calls));
    Attempt attempt;
    attempt.host.faults.FailCall(function, k);
    EXPECT_TRUE(attempt.Run());
    EXPECT_EQ(attempt.Output(), attempt.ExpectedOutput());
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    EXPECT_EQ(attempt.kernel.LivingObjects(), 0);
    attempt.ExpectNextSweepWorks();
  }
}

INSTANTIATE_TEST_SUITE_P(Functions, SweepSurvivableFaults,
                         ::testing::Values("fclose", "remove", "CopyFileA", "GetCurrentDirectoryA",
                                           "SetCurrentDirectoryA", "RegOpen", "GetStringValue"));

// A file that the host does not see, question by question.
TEST(SweepFailures, EachFileThatTheHostDoesNotSeeHasItsOwnConsequence) {
  enum class Output { kNew, kStale };
  struct Consequence {
    const char* question;
    bool verdict;
    Output output;
  };
  const std::vector<Consequence> consequences = {
      {"exists job\\TmpPathInfo0.tmp", true, Output::kNew},       // no paths is a job, too
      {"exists job\\TmpPathInfo1.tmp", true, Output::kNew},       // is not there anyway
      {"exists job\\BinaryPaths.txt", true, Output::kNew},        // no copy
      {"exists job\\BinaryPaths.tmp", true, Output::kNew},        // no copy
      {"exists job\\StockModelInput.tmp", true, Output::kNew},    // no copy
      {"exists job\\StockModelInput.tmp", true, Output::kStale},  // no sweep
      {"exists job\\StockModelOutput.tmp", true, Output::kNew},   // overwritten, not removed
      {"exists job\\StockModelOutput.tmp", true, Output::kNew},   // no copy
      {"exists job\\StockModelOutput.tmp", false, Output::kNew}   // what decides
  };
  for (std::size_t k = 1; k <= consequences.size(); ++k) {
    const Consequence& expected = consequences[k - 1];
    SCOPED_TRACE(std::to_string(k) + ". " + expected.question);
    Attempt attempt;
    attempt.host.faults.FailCall("file_exists", static_cast<int>(k));
    EXPECT_EQ(attempt.Run(), expected.verdict);
    const auto questions = attempt.host.events.Only({"exists"});
    EXPECT_EQ(questions.at(k - 1), expected.question);
    EXPECT_EQ(attempt.HasStaleOutput(), expected.output == Output::kStale);
    if (expected.output == Output::kNew) {
      EXPECT_EQ(attempt.Output(), attempt.ExpectedOutput());
    }
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    attempt.ExpectTidy();
    attempt.ExpectNextSweepWorks();
  }
}

// The events behind the switch to the working directory of those sweeps, one for each allocation
// that fails, which got past `reached` but not to `missed`.
std::vector<std::vector<std::string>> SweepsStoppedBetween(const std::string& reached,
                                                           const std::string& missed) {
  const int allocations = support::CallsOf<Attempt>("new");
  std::vector<std::vector<std::string>> stopped;
  for (int k = 1; k <= allocations; ++k) {
    Attempt attempt;
    attempt.host.faults.FailCall("new", k);
    EXPECT_FALSE(attempt.Run());
    const auto& events = attempt.host.events.Events();
    const auto from = std::find(events.begin(), events.end(), reached);
    if (from == events.end() || std::find(from, events.end(), missed) != events.end()) continue;
    stopped.emplace_back(from + 1, events.end());
  }
  return stopped;
}

TEST(SweepFailures, WithoutMemoryForTheKernelTheDirectoryIsPutBackAndThatIsAll) {
  EXPECT_THAT(SweepsStoppedBetween("chdir job\\", "IFSweep()"),
              ElementsAre(ElementsAre("chdir home", "exists job\\StockModelOutput.tmp",
                                      "exists job\\StockModelOutput.tmp")));
}

TEST(SweepFailures, WithoutMemoryForTheChannelTheKernelIsNotRun) {
  EXPECT_THAT(SweepsStoppedBetween("m_fclose QZTUTLA2 job\\StockModelInput.tmp",
                                   "m_fopen SurfaceXferQZ job\\StockModelOutput.tmp wb"),
              ::testing::Contains(ElementsAre("~IFSweep()", "chdir home",
                                              "exists job\\StockModelOutput.tmp",
                                              "exists job\\StockModelOutput.tmp")));
}

}  // namespace
