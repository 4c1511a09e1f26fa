// The comparison with one thing going wrong, for every place where it can: each time the flag, the
// files and what is open must be as promised, and the next comparison must work.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "stock/SweepPartStockCompare.h"
#include "support/Attempt.h"
#include "support/CompareJobTest.h"

namespace {

constexpr const char* kHeaderOnly = "binary surface";

class Attempt : public support::Attempt<support::CompareJobTest> {
 public:
  bool Run() {
    return RunWithCallbacks(
        [&](UIDlgKernel* callbacks) { return SweepPartStockCompare(WorkDir(), callbacks); });
  }

  static std::vector<std::string> StreamsLeftBy(const std::string& kernelCall) {
    if (kernelCall.starts_with("part.")) return {"QZTUTLA2 job\\PartFileToCompare.iff"};
    if (kernelCall.starts_with("stock.")) return {"QZTUTLA2 job\\StockModelOutput.tmp"};
    return {};
  }

  void ExpectNextOneWorks() {
    EXPECT_TRUE(Run());
    EXPECT_EQ(support::ReadWholeFile(InJob("CompareResults.iff")), ResultBytes());
    EXPECT_EQ(support::ReadWholeFile(InKeep("Job1_TmpSaveCompareInfo.txt")),
              support::TextFileBytes(support::TwoBandsText()));
  }

  using CompareJobTest::CopiesWith;
  using CompareJobTest::Files;
  using CompareJobTest::JobFilesWith;
  using CompareJobTest::ResultBytes;
};

// What lies in the result file when the kernel is stopped in a call: the body is written by Close,
// which the call of that name comes before.
std::string ResultsStoppedIn(const std::string& kernelCall, const Attempt& attempt) {
  return kernelCall == "Compare ends" ? attempt.ResultBytes() : kHeaderOnly;
}

TEST(CompareFailures, KernelIsCalledInAllTheseWays) {
  EXPECT_EQ(support::KernelCallsOf<Attempt>().size(), 3u + 6 + 6 + 8);
}

TEST(CompareFailures, FatalErrorAtEveryKernelCallIsStillASuccess) {
  support::StopInEachKernelCall<Attempt>(
      support::ScriptedKernel::Fatal("no way on"), [](Attempt& attempt, const std::string& call) {
        EXPECT_TRUE(attempt.Run());
        Attempt::Files job = attempt.JobFilesWith(ResultsStoppedIn(call, attempt));
        job["ErrorCapture.txt"] = support::TextFileBytes("\nError Message Received:\nno way on\n");
        EXPECT_EQ(attempt.InJobNow(), job);
        Attempt::Files keep = attempt.CopiesWith(support::TwoBandsText(), true);
        keep["Job1_TmpSaveErrorCapture.txt"] = job["ErrorCapture.txt"];
        EXPECT_EQ(attempt.InKeepNow(), keep);
      });
}

TEST(CompareFailures, CancelAtEveryNotificationLeavesNoRecord) {
  support::CancelAtEachNotification<Attempt>(
      "Comparing", [](Attempt& attempt, const std::string& call) {
        EXPECT_TRUE(attempt.Run());
        EXPECT_EQ(attempt.InJobNow(), attempt.JobFilesWith(ResultsStoppedIn(call, attempt)));
        EXPECT_EQ(attempt.InKeepNow(), attempt.CopiesWith(support::TwoBandsText(), true));
      });
}

TEST(CompareFailures, ForeignExceptionAtEveryKernelCallPassesOnWithoutTheLastCopy) {
  support::StopInEachKernelCall<Attempt>(
      support::ScriptedKernel::Foreign(), [](Attempt& attempt, const std::string& call) {
        EXPECT_THROW(attempt.Run(), std::runtime_error);
        EXPECT_EQ(attempt.InJobNow(), attempt.JobFilesWith(ResultsStoppedIn(call, attempt)));
        EXPECT_EQ(attempt.InKeepNow(), attempt.CopiesWith(support::TwoBandsText(), false));
      });
}

// What one failing call leads to. The copies by their letters: part (p), stock (s), the bands'
// text, whole (t) or empty (e), the last copy (l), the record of a fatal error (r).
struct Outcome {
  bool verdict;
  const char* results;  // null: none; otherwise what the file holds, empty for the whole result
  const char* copies;
};

constexpr Outcome kWhole{true, "", "pstl"};
constexpr Outcome kHeader{true, kHeaderOnly, "pstl"};
constexpr Outcome kHeaderAndRecord{true, kHeaderOnly, "pstlr"};
constexpr Outcome kNoFile{true, nullptr, "pst"};
constexpr Outcome kNoBands{false, nullptr, "pse"};

struct Fault {
  const char* function;
  std::vector<Outcome> outcomes;  // of the call failing for the first time, the second and so on
  bool copiesLieInJob = false;
};

void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.function; }

const std::string& Record() {
  static const std::string record =
      support::TextFileBytes("\nError Message Received:\nThe output has no memory.\n");
  return record;
}

Attempt::Files CopiesOf(const Attempt& attempt, const std::string& letters) {
  const Attempt::Files whole = attempt.CopiesWith(support::TwoBandsText(), true);
  const std::map<char, std::string> names{{'p', "Job1_TmpSaveComparePart.iff"},
                                          {'s', "Job1_TmpSaveCompareStock.iff"},
                                          {'t', "Job1_TmpSaveCompareInfo.txt"},
                                          {'l', "Job1_TmpSaveCompareResults.iff"}};
  Attempt::Files copies;
  for (const char letter : letters) {
    if (letter == 'e') {
      copies[names.at('t')] = "";
    } else if (letter == 'r') {
      copies["Job1_TmpSaveErrorCapture.txt"] = Record();
    } else {
      copies[names.at(letter)] = whole.at(names.at(letter));
    }
  }
  return copies;
}

Attempt::Files JobFilesOf(const Attempt& attempt, const Outcome& outcome) {
  Attempt::Files files = attempt.JobFilesWith("");
  if (outcome.results != nullptr) {
    const std::string results = outcome.results;
    files["CompareResults.iff"] = results.empty() ? attempt.ResultBytes() : results;
  }
  if (std::string(outcome.copies).ends_with('r')) files["ErrorCapture.txt"] = Record();
  return files;
}

class CompareFaults : public ::testing::TestWithParam<Fault> {};

TEST_P(CompareFaults, EachCallFailingInTurnHasItsOwnOutcome) {
  const Fault& fault = GetParam();
  ASSERT_EQ(support::CallsOf<Attempt>(fault.function), static_cast<int>(fault.outcomes.size()));
  support::FailEachCall<Attempt>(fault.function, [&](Attempt& attempt, int k) {
    const Outcome& expected = fault.outcomes[static_cast<std::size_t>(k) - 1];
    Attempt::Files job = JobFilesOf(attempt, expected);
    Attempt::Files keep = CopiesOf(attempt, expected.copies);
    if (fault.copiesLieInJob) job.merge(std::exchange(keep, {}));
    EXPECT_EQ(attempt.Run(), expected.verdict);
    EXPECT_EQ(attempt.InJobNow(), job);
    EXPECT_EQ(attempt.InKeepNow(), keep);
    attempt.ExpectTidy();
  });
}

INSTANTIATE_TEST_SUITE_P(
    Functions, CompareFaults,
    ::testing::Values(
        // No text; no bands.
        Fault{"m_fopen_hl", {{true, "", "psl"}, kNoBands}},
        Fault{"m_fopen_hl status", {kWhole, kNoBands}},
        // No results, but a comparison that ends well; part; stock.
        Fault{"m_fopen", {kNoFile, kHeader, kHeader}},
        // Bands; part; stock.
        Fault{"fread", {kNoBands, kHeader, kHeader}},
        // Text; the results' header, and with it the file; their body.
        Fault{"fwrite", {{true, "", "psel"}, kNoFile, kNoFile}},
        // Of the results only.
        Fault{"fflush", {kNoFile}},
        // Part; stock; the part once more, which is the verdict.
        Fault{"CopyFileA", {{true, "", "stl"}, {true, "", "ptl"}, {false, "", "pst"}}},
        // Old results, which are overwritten.
        Fault{"remove", {kWhole}},
        // Colours; distances; results; kernel; handles of part and stock; the answer's blocks, for
        // want of which the kernel gives up.
        Fault{"new",
              {kNoBands,
               kNoBands,
               {false, nullptr, "pst"},
               kHeader,
               kHeader,
               kHeader,
               kHeaderAndRecord,
               kHeaderAndRecord}},
        Fault{"RegOpen", {kWhole}, true}, Fault{"GetStringValue", {kWhole}, true},
        // Old results, overwritten; no part; no stock; results that are not seen at the end.
        Fault{"file_exists",
              {kWhole, {true, nullptr, ""}, {false, nullptr, ""}, {true, "", "pst"}}}));

TEST(CompareFailures, ResultsThatTheHostDoesNotSeeAreNotCopiedAndTheComparisonDecides) {
  Attempt attempt;
  attempt.host.faults.FailCall("file_exists", 4);
  attempt.kernel.At("Compare", support::ScriptedKernel::Progress("Comparing", 3));
  attempt.progress.cancelOnlyAt = 1;
  EXPECT_FALSE(attempt.Run());
  EXPECT_EQ(attempt.InKeepNow(), attempt.CopiesWith(support::TwoBandsText(), false));
}

}  // namespace
