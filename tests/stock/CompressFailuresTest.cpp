// The compression with one thing going wrong, for every place where it can: each time the flag, the
// files, the directory and what is open must be as promised, and the next one must work.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "stock/StockModelCompress.h"
#include "support/Attempt.h"
#include "support/CompressJobTest.h"

namespace {

class Attempt : public support::Attempt<support::CompressJobTest> {
 public:
  bool Run() {
    return RunWithCallbacks([&](UIDlgKernel* callbacks) {
      return StockModelCompress(WorkDir(), "in.iff", OutputName(), callbacks, kTolerance);
    });
  }

  static std::vector<std::string> StreamsLeftBy(const std::string& kernelCall) {
    if (!kernelCall.starts_with("stock.")) return {};
    return {"QZTUTLA2 in.iff"};
  }

  void ExpectNextOneWorks() {
    EXPECT_TRUE(Run());
    EXPECT_EQ(support::ReadWholeFile(InJob("out.iff")), ResultBytes());
    EXPECT_EQ(support::ReadWholeFile(InJob("BinaryPaths.tmp")), JobPathBytes());
  }

  using CompressJobTest::Files;
  using CompressJobTest::InputAndPath;
  using CompressJobTest::InputBytes;
  using CompressJobTest::IsAtHome;
  using CompressJobTest::JobPathBytes;
  using CompressJobTest::JobPathText;
  using CompressJobTest::ResultBytes;
};

TEST(CompressFailures, KernelIsCalledInAllTheseWays) {
  EXPECT_EQ(support::KernelCallsOf<Attempt>().size(), 16u);
}

TEST(CompressFailures, FatalErrorAtEveryKernelCallRemovesTheOutput) {
  support::StopInEachKernelCall<Attempt>(
      support::ScriptedKernel::Fatal("no way on"), [](Attempt& attempt, const std::string&) {
        EXPECT_FALSE(attempt.Run());
        Attempt::Files files = attempt.InputAndPath();
        const std::string record = support::TextFileBytes("\nError Message Received:\nno way on\n");
        files["ErrorCapture.txt"] = record;
        files["Job1_TmpSaveErrorCapture.txt"] = record;
        EXPECT_EQ(attempt.InJobNow(), files);
      });
}

TEST(CompressFailures, CancelAtEveryNotificationRemovesTheOutputAndLeavesNoRecord) {
  support::CancelAtEachNotification<Attempt>("Sweeping", [](Attempt& attempt, const std::string&) {
    EXPECT_FALSE(attempt.Run());
    EXPECT_EQ(attempt.InJobNow(), attempt.InputAndPath());
  });
}

TEST(CompressFailures, ForeignExceptionAtEveryKernelCallPassesOnAndLeavesTheFiles) {
  support::StopInEachKernelCall<Attempt>(
      support::ScriptedKernel::Foreign(), [](Attempt& attempt, const std::string& call) {
        EXPECT_THROW(attempt.Run(), std::runtime_error);
        Attempt::Files files = attempt.InputAndPath();
        // From Run on there is a channel, and with it the file.
        const bool hasChannel = call.starts_with("Run") || call.starts_with("output.");
        if (hasChannel) files["out.iff"] = "binary surface";
        if (call == "Run ends") files["out.iff"] = attempt.ResultBytes();
        EXPECT_EQ(attempt.InJobNow(), files);
      });
}

// What one failing call leads to. Of the files beside the input, by their letters: the path, whole
// (p) or empty (e); its text, whole (t) or empty (u); the output (o); the record of a fatal error
// and its copy (r).
struct Outcome {
  bool verdict;
  const char* files;
  bool endsAtHome = true;
};

struct Fault {
  const char* function;
  std::vector<Outcome> outcomes;  // of the call failing for the first time, the second and so on
};

void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.function; }

Attempt::Files FilesOf(const Attempt& attempt, const std::string& letters) {
  const std::string record =
      support::TextFileBytes("\nError Message Received:\nThe output has no memory.\n");
  const std::map<char, Attempt::Files> files{
      {'p', {{"BinaryPaths.tmp", Attempt::JobPathBytes()}}},
      {'e', {{"BinaryPaths.tmp", ""}}},
      {'t', {{"BinaryPaths.txt", Attempt::JobPathText()}}},
      {'u', {{"BinaryPaths.txt", ""}}},
      {'o', {{"out.iff", attempt.ResultBytes()}}},
      {'r', {{"ErrorCapture.txt", record}, {"Job1_TmpSaveErrorCapture.txt", record}}}};
  Attempt::Files all{{"in.iff", attempt.InputBytes()}};
  for (const char letter : letters) {
    Attempt::Files some = files.at(letter);
    all.merge(some);
  }
  return all;
}

class CompressFaults : public ::testing::TestWithParam<Fault> {};

TEST_P(CompressFaults, EachCallFailingInTurnHasItsOwnOutcome) {
  const Fault& fault = GetParam();
  ASSERT_EQ(support::CallsOf<Attempt>(fault.function), static_cast<int>(fault.outcomes.size()));
  support::FailEachCall<Attempt>(fault.function, [&](Attempt& attempt, int k) {
    const Outcome& expected = fault.outcomes[static_cast<std::size_t>(k) - 1];
    EXPECT_EQ(attempt.Run(), expected.verdict);
    EXPECT_EQ(attempt.InJobNow(), FilesOf(attempt, expected.files));
    EXPECT_EQ(attempt.IsAtHome(), expected.endsAtHome);
  });
}

INSTANTIATE_TEST_SUITE_P(
    Functions, CompressFaults,
    ::testing::Values(
        // Input; path, which is there but empty when the host calls it unopened.
        Fault{"m_fopen_hl", {{false, ""}, {false, ""}}},
        Fault{"m_fopen_hl status", {{false, ""}, {false, "e"}}},
        // Stock; output.
        Fault{"m_fopen", {{false, "pt"}, {false, "pt"}}},
        // Path to be converted; its text.
        Fault{"fopen", {{false, "p"}, {false, "p"}}},
        // Input; path; stock.
        Fault{"fread", {{false, ""}, {false, "pu"}, {false, "pt"}}},
        // Path; text; the output's header, and with it the file; its body.
        Fault{"fwrite", {{false, "e"}, {false, "pu"}, {false, "pt"}, {false, "pt"}}},
        // Path; text; output. All had been written.
        Fault{"fflush", {{false, "p"}, {false, "pt"}, {false, "pt"}}},
        // Kernel; handles; channel; the answer's blocks, for want of which the kernel gives up.
        Fault{"new", {{false, "pt"}, {false, "pt"}, {false, "pt"}, {false, "ptr"}, {false, "ptr"}}},
        Fault{"fclose", {{true, "pto"}, {true, "pto"}}},
        // Old output, which is overwritten.
        Fault{"remove", {{true, "pto"}}},
        // Old output, overwritten as well; an output that is not seen at the end.
        Fault{"file_exists", {{true, "pto"}, {false, "pto"}}},
        // A directory that is not known cannot be put back.
        Fault{"GetCurrentDirectoryA", {{true, "pto", false}}},
        // Not entered: the input's bare name means nothing there. Not left.
        Fault{"SetCurrentDirectoryA", {{false, "pt"}, {true, "pto", false}}}));

}  // namespace
