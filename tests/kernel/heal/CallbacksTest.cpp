// Progress, stops and threads: what a caller of the heal can see of it besides the result.

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "HealRun.h"
#include "kernel/common/StageProgress.h"
#include "kernel/common/Workers.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

using support::Box;

// Needs every stage: a hole, a turned facet, crossing bodies, a repeated facet.
formats::Mesh Damaged() {
  formats::Mesh mesh = Box({0, 0, 0}, {2, 2, 2}, 1);
  Add(mesh, Box({1, 1, 1}, {3, 3, 3}, 2));
  Add(mesh, Torus(20, 12, {50, 0, 0}));
  mesh.facets.erase(mesh.facets.begin() + 100, mesh.facets.begin() + 104);
  std::swap(mesh.facets[200].vertices[0], mesh.facets[200].vertices[1]);
  mesh.facets.push_back(mesh.facets[300]);
  return mesh;
}

TEST(HealCallbacks, StagesBeginWithTextsThatADialogKnows) {
  const HealResult run = RunHeal(Damaged(), 0.01);
  const std::vector<std::string> starts = {"Reading",   "Preparing",  "Initialising",
                                           "Stitching", "Generating", "Scanning",
                                           "Cleaning",  "Scanning",   "Writing"};
  ASSERT_EQ(run.dialog.stages.size(), starts.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    EXPECT_EQ(run.dialog.stages[i].substr(0, starts[i].size()), starts[i]);
  }
}

TEST(HealCallbacks, CountsOfAStageRiseFromOneToItsTotal) {
  const HealResult run = RunHeal(Damaged(), 0.01);
  int total = 0, last = 0;
  for (const std::string& call : run.dialog.calls) {
    if (call.rfind("progress ", 0) == 0) {
      EXPECT_EQ(total, 0) << "a stage within a stage";
      total = std::stoi(call.substr(9));
      EXPECT_GE(total, 1);
      EXPECT_LE(total, 1000);
      last = 0;
    } else if (call.rfind("count ", 0) == 0) {
      const int count = std::stoi(call.substr(6));
      if (last == 0) {
        EXPECT_EQ(count, 1);
      }
      EXPECT_GT(count, last);
      EXPECT_LE(count, total);
      last = count;
    } else if (call == "end") {
      EXPECT_EQ(last, total);
      total = 0;
    }
  }
  EXPECT_EQ(total, 0) << "a stage was left open";
  EXPECT_EQ(run.dialog.calls.back(), "end");
}

TEST(HealCallbacks, StopAtAnyCallLeavesTheOlderOutputAndNoOtherFile) {
  const formats::Mesh mesh = Damaged();
  const HealResult whole = RunHeal(mesh, 0.01);
  ExpectMended(whole);
  int stops = 0;
  for (int k = 1; k < 2000; ++k) {
    const HealResult run = RunHeal(mesh, 0.01, k);
    EXPECT_EQ(run.names, (std::vector<std::string>{"in.iff", "out.iff"}));
    if (!run.stopped) {
      EXPECT_TRUE(run.output == whole.output);
      break;
    }
    ++stops;
    EXPECT_EQ(run.output, kOlderOutput) << "stopped at call " << k;
  }
  EXPECT_GE(stops, 32);
  EXPECT_LT(stops, 1999);
}

TEST(HealCallbacks, StopAtAWarningLeavesTheOlderOutput) {
  formats::Mesh mesh = Reversed(Box({0, 0, 0}, {1, 1, 1}, 1));
  const HealResult whole = RunHeal(mesh, 0.01);
  const auto& calls = whole.dialog.calls;
  const auto warning = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
    return call.rfind("warning", 0) == 0;
  });
  ASSERT_NE(warning, calls.end());
  const HealResult run = RunHeal(mesh, 0.01, static_cast<int>(warning - calls.begin()) + 1);
  EXPECT_TRUE(run.stopped);
  EXPECT_EQ(run.output, kOlderOutput);
}

TEST(HealCallbacks, EveryNumberOfThreadsGivesTheSameBytes) {
  formats::Mesh mesh = Damaged();
  Add(mesh, Torus(150, 90, {0, 60, 0}));
  kernel::LimitWorkers(1);
  const HealResult one = RunHeal(mesh, 0.01);
  for (const unsigned threads : {2U, 5U}) {
    kernel::LimitWorkers(threads);
    EXPECT_TRUE(RunHeal(mesh, 0.01).output == one.output) << threads;
  }
  kernel::LimitWorkers(0);
  ExpectMended(one);
}

// A dialog that asks for the user's stop as the host's does: at a first count, or at a rise of more
// than three points.
class Poller : public UIDialog {
 public:
  void CreateProgress(const char*, int total) override { m_total = total, m_fresh = true; }
  void ResetWait(const char*, int total) override {
    m_total = total, m_fresh = true;
    ++resets;
  }
  void SetProgress(int count) override {
    ++counts;
    const double percent = 100.0 * count / m_total;
    if (!m_fresh && percent - m_last <= 3) return;
    const auto now = std::chrono::steady_clock::now();
    if (m_polls++ > 0) longest = std::max(longest, now - m_polled);
    m_polled = now;
    m_last = percent;
    m_fresh = false;
  }

  int counts = 0, resets = 0;
  std::chrono::steady_clock::duration longest{};

 private:
  int m_total = 0, m_polls = 0;
  bool m_fresh = false;
  double m_last = 0;
  std::chrono::steady_clock::time_point m_polled;
};

TEST(HealCallbacks, UserIsAskedThoughTheShareDoesNotRise) {
  Poller dialog;
  kernel::StageProgress progress(&dialog);
  progress.Begin("Stitching");
  const auto start = std::chrono::steady_clock::now();
  while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(1500)) {
    progress.Advance(0.5);
    std::this_thread::yield();
  }
  progress.End();
  EXPECT_GE(dialog.resets, 3);
  EXPECT_GE(dialog.counts, 12);
  EXPECT_LT(dialog.longest, std::chrono::milliseconds(600));
}

TEST(HealCallbacks, StageIsNotAnnouncedAgainWhileTheShareRises) {
  Poller dialog;
  kernel::StageProgress progress(&dialog);
  progress.Begin("Stitching");
  for (int i = 1; i <= 100; ++i) progress.Advance(0.01 * i);
  progress.End();
  EXPECT_EQ(dialog.resets, 0);
}

}  // namespace
}  // namespace heal_test
