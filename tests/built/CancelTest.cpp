// The user's stop in the middle of every operation of the built add-in with the open kernel, on
// jobs that take a while: how soon the operation returns, and what it leaves.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "built/FaultyHost.h"
#include "built/LargeJobs.h"
#include "built/ProcessFigures.h"
#include "built/Stopwatch.h"
#include "built/Workplace.h"
#include "host/QZCore/HostControl.h"
#include "host/qzhost/AddIn.h"
#include "support/TempDirectory.h"

namespace {

using Way = FaultyHost::Way;

constexpr int kPoints = 10;
constexpr const char* kOlder = "of an earlier run";

// The longest that a user waits for the stop; a slow build is given more.
Stopwatch::Seconds Limit() {
  const char* more = std::getenv("QZ_STOP_SECONDS");
  return Stopwatch::Seconds(more == nullptr ? 0.5 : std::strtod(more, nullptr));
}

class CancelTest : public ::testing::TestWithParam<BuiltJob> {
 protected:
  const BuiltJob& Job() const { return m_place.Job(); }

  int Run(Way way, long k) {
    m_place.Fill();
    m_host.Begin(way, k);
    return m_place.Call(m_addIn, &m_host);
  }

  /// Stops at the k-th question, or at an earlier one when there are fewer this time: how often a
  /// kernel asks depends on the time that it takes, too. Returns the time from the wish to the
  /// return.
  Stopwatch::Seconds Stop(long k) {
    for (;; k -= (k + 9) / 10) {
      m_place.Fill();
      support::WriteWholeFile(m_place.OutputPath(), kOlder);
      m_host.Begin(Way::kStops, k);
      const int flag = m_place.Call(m_addIn, &m_host);
      const Stopwatch::Seconds taken = m_host.SinceTheWish();
      if (m_host.Calls(Way::kStops) < k) continue;
      // The surface has been loaded before the kernel asks for the first time.
      EXPECT_EQ(flag, Job().stopped < 0 ? 1 : Job().stopped);
      return taken;
    }
  }

  /// Nothing where the operation removes an output that is not finished, the header where it leaves
  /// it, and the older one where the kernel makes its file in one go.
  std::string PromisedOutput() const {
    if (Job().header.empty()) return kOlder;
    return Job().leftovers.empty() ? Job().header : "none";
  }

  void ExpectWhatIsPromised() const {
    EXPECT_TRUE(m_place.Output() == PromisedOutput()) << m_place.Output().size() << " bytes";
    m_place.ExpectInputsWhole();
    std::set<std::string> names = Job().leftovers;
    for (const auto& [name, bytes] : Job().inputs) names.insert(name);
    if (PromisedOutput() != "none") names.insert(Job().output);
    std::set<std::string> copies;
    for (const std::string& name : Job().copies) copies.insert(CopyOf(name));
    if (const auto record = m_place.Directory() / "ErrorCapture.txt"; exists(record)) {
      // Of warnings that came before the stop, which itself leaves none.
      EXPECT_EQ(support::ReadWholeFile(record).find("Error Message"), std::string::npos);
      names.insert("ErrorCapture.txt");
      copies.insert(CopyOf("TmpSaveErrorCapture.txt"));
    }
    EXPECT_EQ(Names(m_place.Directory()), names);
    EXPECT_EQ(Names(m_place.Copies()), copies);
    EXPECT_EQ(std::filesystem::current_path(), m_home);
    EXPECT_EQ(OpenStreamCount(), 0) << OpenStreamReport().GetString();
  }

  std::string CopyOf(const std::string& name) const {
    return m_place.Directory().filename().string() + "_" + name;
  }

  static std::set<std::string> Names(const std::filesystem::path& directory) {
    const auto names = support::NamesIn(directory);
    return {names.begin(), names.end()};
  }

  const Workplace m_place{GetParam()};
  const std::filesystem::path m_home = std::filesystem::current_path();
  FaultyHost m_host;
  const host::AddIn m_addIn{BuiltAddIn()};
};

TEST_P(CancelTest, AnswersSoonAtTenPointsOfItsRunAndLeavesWhatIsPromisedAndNothingElse) {
  ASSERT_EQ(Run(Way::kNone, 0), 1);
  const Stopwatch::Seconds silence = m_host.LongestSilence();
  const long questions = m_host.Calls(Way::kStops);
  const std::string whole = m_place.Output();
  EXPECT_LT(silence, Limit());
  ProcessFigures before = FiguresOfThisProcess();
  Stopwatch::Seconds longest{0};
  // The filter has no kernel that asks: it must be done within the time.
  for (int point = 1; questions > 0 && point <= kPoints; ++point) {
    const long k = std::max(1L, questions * point / (kPoints + 1));
    SCOPED_TRACE("question " + std::to_string(k) + " of " + std::to_string(questions));
    const Stopwatch::Seconds taken = Stop(k);
    EXPECT_LT(taken, Limit());
    longest = std::max(longest, taken);
    ExpectWhatIsPromised();
    // An emulator makes a thread of its own at the first exception.
    if (point == 1) before = FiguresOfThisProcess();
  }
  const ProcessFigures after = FiguresOfThisProcess();
  EXPECT_LE(after.threads, before.threads);
  EXPECT_LE(after.handles, before.handles);
  EXPECT_EQ(Run(Way::kNone, 0), 1);
  EXPECT_TRUE(m_place.Output() == whole);
  std::printf(
      "%s: asked %ld times, %.0f ms apart at most; returned %.0f ms after the wish at most\n",
      Job().name, questions, 1000 * silence.count(), 1000 * longest.count());
}

INSTANTIATE_TEST_SUITE_P(Exports, CancelTest, ::testing::ValuesIn(LargeJobs()),
                         [](const auto& job) { return std::string(job.param.name); });

}  // namespace
