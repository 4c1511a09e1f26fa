// The compression with one thing going wrong, for every place where it can: each time the flag, the
// files, the directory and what is open must be as promised, and the next one must work.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "stock/StockModelCompress.h"
#include "support/Attempt.h"
#include "support/CompressJobTest.h"
#include "support/NothrowBlocks.h"

namespace {

using ::testing::IsEmpty;

class Attempt : public support::Attempt<support::CompressJobTest> {
 public:
  bool Run() {
    return RunWithCallbacks([&](UIDlgKernel* callbacks) {
      return StockModelCompress(WorkDir(), "in.iff", OutputName(), callbacks, kTolerance);
    });
  }

  void ExpectNextOneWorks() {
    progress.cancelOnlyAt = 0;
    EXPECT_TRUE(Run());
    EXPECT_EQ(support::ReadWholeFile(InJob("out.iff")), ResultBytes());
    EXPECT_EQ(support::ReadWholeFile(InJob("BinaryPaths.tmp")), JobPathBytes());
  }

  using CompressJobTest::Files;
  using CompressJobTest::FilesInJob;
  using CompressJobTest::InputAnd;
  using CompressJobTest::JobPathBytes;
  using CompressJobTest::ResultBytes;
};

// The loader leaves its stream and its handle array to whoever throws through it.
std::vector<std::string> StreamsLeftBy(const std::string& kernelCall) {
  if (!kernelCall.starts_with("stock.")) return {};
  return {"QZTUTLA2 in.iff"};
}

std::size_t BlocksLeftBy(const std::string& kernelCall) { return StreamsLeftBy(kernelCall).size(); }

TEST(CompressFailures, FatalErrorAtEveryKernelCallRemovesTheOutput) {
  const auto calls = support::KernelCallsOf<Attempt>();
  ASSERT_EQ(calls.size(), 16u);
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE("fatal error in call " + std::to_string(k) + ", " + calls[k - 1]);
    Attempt attempt;
    attempt.kernel.AtCall(static_cast<int>(k), support::ScriptedKernel::Fatal("no way on"));
    EXPECT_FALSE(attempt.Run());
    Attempt::Files files = attempt.InputAnd(Attempt::JobPathBytes(), "");
    files["ErrorCapture.txt"] = support::TextFileBytes("\nError Message Received:\nno way on\n");
    files["Job1_TmpSaveErrorCapture.txt"] = files["ErrorCapture.txt"];
    EXPECT_EQ(attempt.FilesInJob(), files);
    EXPECT_EQ(attempt.host.OpenStreams(), StreamsLeftBy(calls[k - 1]));
    EXPECT_EQ(support::TakeLostBlocks(), BlocksLeftBy(calls[k - 1]));
    attempt.ExpectTidy();
    attempt.ExpectNextOneWorks();
  }
}

TEST(CompressFailures, CancelAtEveryNotificationRemovesTheOutputAndLeavesNoRecord) {
  // A kernel that reports progress inside every call: two notifications each.
  const auto calls = support::KernelCallsOf<Attempt>();
  for (int k = 1; k <= 2 * static_cast<int>(calls.size()); ++k) {
    SCOPED_TRACE("cancel at notification " + std::to_string(k));
    Attempt attempt;
    for (const std::string& name : calls) {
      attempt.kernel.At(name, support::ScriptedKernel::Progress("Sweeping", 10));
    }
    attempt.progress.cancelOnlyAt = k;
    EXPECT_FALSE(attempt.Run());
    EXPECT_EQ(attempt.progress.Questions(), k);
    EXPECT_EQ(attempt.FilesInJob(), attempt.InputAnd(Attempt::JobPathBytes(), ""));
    EXPECT_EQ(support::TakeLostBlocks(), BlocksLeftBy(calls[static_cast<std::size_t>(k - 1) / 2]));
    attempt.ExpectTidy();
    attempt.ExpectNextOneWorks();
  }
}

TEST(CompressFailures, ForeignExceptionAtEveryKernelCallPassesOnAndLeavesTheFiles) {
  const auto calls = support::KernelCallsOf<Attempt>();
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE("foreign exception in call " + std::to_string(k) + ", " + calls[k - 1]);
    Attempt attempt;
    attempt.kernel.AtCall(static_cast<int>(k), support::ScriptedKernel::Foreign());
    EXPECT_THROW(attempt.Run(), std::runtime_error);
    std::string output;
    if (k > 8) output = "binary surface";  // from Run on there is a channel
    if (calls[k - 1] == "Run ends") output = attempt.ResultBytes();
    EXPECT_EQ(attempt.FilesInJob(), attempt.InputAnd(Attempt::JobPathBytes(), output));
    EXPECT_EQ(attempt.host.OpenStreams(), StreamsLeftBy(calls[k - 1]));
    EXPECT_EQ(support::TakeLostBlocks(), BlocksLeftBy(calls[k - 1]));
    attempt.ExpectTidy();
    attempt.ExpectNextOneWorks();
  }
}

// Calls without which there is no result; each failure ends in false and no output.
class CompressFatalFaults : public ::testing::TestWithParam<const char*> {};

TEST_P(CompressFatalFaults, EachCallFailingInTurnLeavesNoOutput) {
  const std::string function = GetParam();
  const int calls = support::CallsOf<Attempt>(function);
  ASSERT_GT(calls, 0);
  for (int k = 1; k <= calls; ++k) {
    SCOPED_TRACE(function + " " + std::to_string(k) + " of " + std::to_string(calls));
    Attempt attempt;
    attempt.host.faults.FailCall(function, k);
    EXPECT_FALSE(attempt.Run());
    EXPECT_FALSE(attempt.JobHas("out.iff"));
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    attempt.ExpectTidy();
    attempt.ExpectNextOneWorks();
  }
}

INSTANTIATE_TEST_SUITE_P(Functions, CompressFatalFaults,
                         ::testing::Values("m_fopen_hl", "m_fopen_hl status", "m_fopen", "fopen",
                                           "fread", "fwrite", "fflush", "new"));

// Calls whose failure does not matter to the result.
class CompressSurvivableFaults : public ::testing::TestWithParam<const char*> {};

TEST_P(CompressSurvivableFaults, EachCallFailingInTurnLeavesTheRightOutput) {
  const std::string function = GetParam();
  const int calls = support::CallsOf<Attempt>(function);
  ASSERT_GT(calls, 0);
  for (int k = 1; k <= calls; ++k) {
    SCOPED_TRACE(function + " " + std::to_string(k) + " of " + std::to_string(calls));
    Attempt attempt;
    attempt.host.faults.FailCall(function, k);
    EXPECT_TRUE(attempt.Run());
    EXPECT_EQ(attempt.FilesInJob(),
              attempt.InputAnd(Attempt::JobPathBytes(), attempt.ResultBytes()));
    EXPECT_THAT(attempt.host.OpenStreams(), IsEmpty());
    EXPECT_EQ(attempt.kernel.LivingObjects(), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Functions, CompressSurvivableFaults,
                         ::testing::Values("fclose", "remove", "GetCurrentDirectoryA"));

TEST(CompressFailures, FileThatTheHostDoesNotSeeHasItsOwnConsequence) {
  // The old output is overwritten instead of removed; the new one is not found.
  const bool verdicts[] = {true, false};
  for (int k = 1; k <= 2; ++k) {
    Attempt attempt;
    attempt.host.faults.FailCall("file_exists", k);
    EXPECT_EQ(attempt.Run(), verdicts[k - 1]);
    EXPECT_EQ(attempt.FilesInJob(),
              attempt.InputAnd(Attempt::JobPathBytes(), attempt.ResultBytes()));
  }
}

}  // namespace
