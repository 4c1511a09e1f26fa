// The built add-in with the open kernel: every export on a small job, stopped, thrown at and out of
// memory at up to 200 moments spread evenly over its run. Each time inputs and output, streams and
// memory must be as promised, and the next run must make the same bytes as the first.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "built/BuiltJobs.h"
#include "built/FaultyHost.h"
#include "built/Workplace.h"
#include "host/QZCore/HostControl.h"
#include "host/qzhost/AddIn.h"
#include "kernel/FailingAllocation.h"
#include "support/TempDirectory.h"

namespace {

using Way = FaultyHost::Way;

constexpr int kThrown = -1;

// At how many moments of a run something goes wrong at most; a slow build asks for fewer.
long MostMoments() {
  const char* fewer = std::getenv("QZ_FAULT_MOMENTS");
  return fewer == nullptr ? 200 : std::strtol(fewer, nullptr, 10);
}

std::vector<long> Spread(long all) {
  std::vector<long> values;
  const long count = std::min(all, MostMoments());
  for (long i = 0; i < count; ++i) values.push_back(1 + i * all / count);
  return values;
}

// Of the system, whoever opened them.
std::size_t OpenDescriptors() { return support::NamesIn("/proc/self/fd").size(); }

class BuiltFaultsTest : public ::testing::TestWithParam<BuiltJob> {
 protected:
  BuiltFaultsTest() {
    // What is made once and kept.
    RunClean();
    m_clean = Output();
    EXPECT_GT(m_clean.size(), 30u);
  }

  const BuiltJob& Job() const { return m_place.Job(); }
  std::string Output() const { return m_place.Output(); }

  /// Runs with the n-th allocation failing (0: none), or the k-th call of the host going wrong; the
  /// flag, or kThrown.
  int Run(long n, Way way, long k) {
    m_place.Fill();
    m_host.Begin(way, k);
    kernel_test::FailingAllocation memory(n);
    int flag = kThrown;
    try {
      flag = m_place.Call(m_addIn, &m_host);
    } catch (const std::runtime_error&) {
    } catch (const std::bad_alloc&) {
    }
    m_allocations = memory.Allocations();
    m_balance = memory.Balance();
    return flag;
  }

  void RunClean() {
    EXPECT_EQ(Run(0, Way::kNone, 0), 1);
    EXPECT_EQ(OpenStreamCount(), 0);
  }

  /// Whether the output is whole, missing or what an unclosed channel leaves.
  bool HasPromisedOutput() const {
    const std::string output = Output();
    return output == m_clean || output == "none" || output == Job().header;
  }

  /// Or what is left of it when memory runs out; and empty, when the host has run out of it behind
  /// making the file.
  bool HasWhatMemoryLeaves() const {
    const std::string output = Output();
    if (Job().loss == BuiltJob::Loss::kFacets && output.size() < m_clean.size()) return true;
    if (Job().loss == BuiltJob::Loss::kEnd && m_clean.starts_with(output)) return true;
    return output.empty() || HasPromisedOutput();
  }

  /// All that holds after every run, however it ended.
  void ExpectTidy() {
    m_place.ExpectInputsWhole();
    std::set<std::string> names = Job().leftovers;
    names.insert({"ErrorCapture.txt", Job().output});
    for (const auto& [name, bytes] : Job().inputs) names.insert(name);
    for (const std::string& name : support::NamesIn(m_place.Directory())) {
      EXPECT_TRUE(names.contains(name)) << name;
    }
    EXPECT_EQ(std::filesystem::current_path(), m_home);
  }

  /// The loader leaves its stream to whoever throws through it, and its array of handles. Nothing
  /// else may be open.
  void ExpectOnlyTheLoadersLeftovers(long otherBlocks = 0) {
    const std::string report = OpenStreamReport().GetString();
    const long streams = std::count(report.begin(), report.end(), '\n');
    EXPECT_LE(streams, 1) << report;
    if (streams > 0) {
      EXPECT_TRUE(report.starts_with("QZTUTLA2:")) << report;
    }
    EXPECT_LE(m_balance, otherBlocks + streams);
    for (const auto& [name, bytes] : Job().inputs) {
      CloseStreamsOn((support::AddinSpelling(m_place.Directory()) + name).c_str());
      CloseStreamsOn(name.c_str());
    }
    EXPECT_EQ(OpenStreamCount(), 0) << OpenStreamReport().GetString();
  }

  void ExpectNextOneWorks() {
    RunClean();
    EXPECT_TRUE(Output() == m_clean);
  }

  const Workplace m_place{GetParam()};
  const std::filesystem::path m_home = std::filesystem::current_path();
  FaultyHost m_host;
  const host::AddIn m_addIn{BuiltAddIn()};
  std::string m_clean;
  long m_allocations = 0;
  long m_balance = 0;
};

TEST_P(BuiltFaultsTest, CleanRunLeavesNoMemoryAndMakesTheSameBytesAgain) {
  ExpectNextOneWorks();
  EXPECT_EQ(m_balance, 0);
}

TEST_P(BuiltFaultsTest, UsersStopAtAnyQuestionLeavesWhatIsPromised) {
  RunClean();
  int runs = 0;
  for (const long k : Spread(m_host.Calls(Way::kStops))) {
    SCOPED_TRACE("question " + std::to_string(k));
    const int flag = Run(0, Way::kStops, k);
    // How often a kernel asks may depend on the time that it takes.
    if (m_host.Calls(Way::kStops) < k) continue;
    if (Job().stopped >= 0) {
      EXPECT_EQ(flag, Job().stopped);
    } else {
      EXPECT_NE(flag, kThrown);
    }
    ExpectTidy();
    EXPECT_TRUE(HasPromisedOutput()) << Output().size() << " bytes";
    ExpectOnlyTheLoadersLeftovers();
    ExpectNextOneWorks();
    ++runs;
  }
  std::printf("%s: stopped %d times\n", Job().name, runs);
}

TEST_P(BuiltFaultsTest, ExceptionOfTheHostAtAnyCallPassesThrough) {
  RunClean();
  int runs = 0;
  for (const long k : Spread(m_host.Calls(Way::kThrows))) {
    SCOPED_TRACE("call " + std::to_string(k));
    const int flag = Run(0, Way::kThrows, k);
    if (m_host.Calls(Way::kThrows) < k) continue;
    EXPECT_EQ(flag, kThrown);
    ExpectTidy();
    EXPECT_TRUE(HasPromisedOutput()) << Output().size() << " bytes";
    ExpectOnlyTheLoadersLeftovers();
    ExpectNextOneWorks();
    ++runs;
  }
  std::printf("%s: thrown at %d times\n", Job().name, runs);
}

TEST_P(BuiltFaultsTest, AllocationThatFailsAnywhereLosesNothing) {
  RunClean();
  const std::size_t descriptors = OpenDescriptors();
  int runs = 0;
  int thrown = 0;
  for (const long n : Spread(m_allocations)) {
    SCOPED_TRACE("allocation " + std::to_string(n) + " of " + std::to_string(m_allocations));
    if (Run(n, Way::kNone, 0) == kThrown) ++thrown;
    ExpectTidy();
    EXPECT_TRUE(HasWhatMemoryLeaves()) << Output().size() << " bytes of " << m_clean.size();
    ExpectOnlyTheLoadersLeftovers(Job().loss == BuiltJob::Loss::kLibraryBlocks ? 4 : 0);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    ExpectNextOneWorks();
    ++runs;
  }
  std::printf("%s: out of memory %d times, %d of them passed through\n", Job().name, runs, thrown);
}

INSTANTIATE_TEST_SUITE_P(Exports, BuiltFaultsTest, ::testing::ValuesIn(BuiltJobs()),
                         [](const auto& job) { return std::string(job.param.name); });

}  // namespace
