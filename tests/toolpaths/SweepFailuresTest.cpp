// The sweep with one thing going wrong, for every place where it can: each time the flag, the
// files, the directory and what is open must be as promised, and the next sweep must work.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Attempt.h"
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

  static std::vector<std::string> StreamsLeftBy(const std::string& kernelCall) {
    if (!kernelCall.starts_with("stock.")) return {};
    return {"QZTUTLA2 job\\StockModelInput.tmp"};
  }

  void ExpectNextOneWorks() {
    EXPECT_TRUE(Run());
    EXPECT_EQ(Output(), ExpectedOutput());
  }

  using SweepJobTest::ExpectedOutput;
  using SweepJobTest::HasStaleOutput;
};

TEST(SweepFailures, KernelIsCalledInAllTheseWays) {
  EXPECT_EQ(support::KernelCallsOf<Attempt>().size(), 17u);
}

TEST(SweepFailures, FatalErrorAtEveryKernelCallRemovesTheOutput) {
  support::StopInEachKernelCall<Attempt>(support::ScriptedKernel::Fatal("no way on"),
                                         [](Attempt& attempt, const std::string&) {
                                           EXPECT_FALSE(attempt.Run());
                                           EXPECT_FALSE(attempt.HasOutput());
                                           EXPECT_FALSE(attempt.HasOutputCopy());
                                           EXPECT_TRUE(attempt.HasErrorRecord());
                                         });
}

TEST(SweepFailures, CancelAtEveryNotificationRemovesTheOutputAndLeavesNoRecord) {
  support::CancelAtEachNotification<Attempt>("Sweeping", [](Attempt& attempt, const std::string&) {
    EXPECT_FALSE(attempt.Run());
    EXPECT_FALSE(attempt.HasOutput());
    EXPECT_FALSE(attempt.HasOutputCopy());
    EXPECT_FALSE(attempt.HasErrorRecord());
  });
}

TEST(SweepFailures, ForeignExceptionAtEveryKernelCallPassesOn) {
  support::StopInEachKernelCall<Attempt>(
      support::ScriptedKernel::Foreign(), [](Attempt& attempt, const std::string&) {
        EXPECT_THROW(attempt.Run(), std::runtime_error);
        // Nothing is removed or copied on such a way out.
        EXPECT_FALSE(attempt.HasOutputCopy());
        EXPECT_THAT(attempt.host.events.Only({"remove"}),
                    ElementsAre("remove job\\StockModelOutput.tmp"));
      });
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
    attempt.ExpectNextOneWorks();
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
    attempt.ExpectNextOneWorks();
  }
}

TEST_P(SweepOpenFailures, SweepWorksWhenEveryOpenDoes) {
  Attempt attempt;
  attempt.host.statusWrites = GetParam();
  EXPECT_EQ(attempt.host.faults.Calls("m_fopen_hl"), 0);
  attempt.ExpectNextOneWorks();
  EXPECT_EQ(attempt.host.faults.Calls("m_fopen_hl"), 2);
}

INSTANTIATE_TEST_SUITE_P(BothHosts, SweepOpenFailures,
                         ::testing::Values(support::TestHost::StatusWrites::kOnEveryCall,
                                           support::TestHost::StatusWrites::kOnlyOnFailure));

// Calls whose failure must not be survived: without them there is no result to speak of.
class SweepFatalFaults : public ::testing::TestWithParam<const char*> {};

TEST_P(SweepFatalFaults, EachCallFailingInTurnLeavesNoWrongResult) {
  support::FailEachCall<Attempt>(GetParam(), [](Attempt& attempt, int) {
    EXPECT_FALSE(attempt.Run());
    // Either the job ended before the old result was touched, or there is none.
    EXPECT_TRUE(attempt.HasStaleOutput() || !attempt.HasOutput());
    EXPECT_FALSE(attempt.HasOutputCopy());
    attempt.ExpectTidy();
  });
}

INSTANTIATE_TEST_SUITE_P(Functions, SweepFatalFaults,
                         ::testing::Values("fopen", "fread", "fwrite", "fflush", "fgetpos",
                                           "fsetpos", "m_fopen", "m_fopen_hl", "new"));

// Calls whose failure does not matter to the result: a registry that does not answer, a copy that
// is not made, an old result that is overwritten instead of removed, a directory that is not
// changed, data that is written although the stream complains when it is closed.
class SweepSurvivableFaults : public ::testing::TestWithParam<const char*> {};

TEST_P(SweepSurvivableFaults, EachCallFailingInTurnLeavesTheRightResult) {
  support::FailEachCall<Attempt>(GetParam(), [](Attempt& attempt, int) {
    EXPECT_TRUE(attempt.Run());
    EXPECT_EQ(attempt.Output(), attempt.ExpectedOutput());
  });
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
    attempt.ExpectNextOneWorks();
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
