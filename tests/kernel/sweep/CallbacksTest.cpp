// Progress, stops and memory: what a caller of the sweep can see of it besides the result.

#include <algorithm>
#include <gtest/gtest.h>

#include "SweepRun.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

formats::Mesh Block() { return support::Box({0, 0, 0}, {12, 10, 6}, 1); }

std::vector<formats::PathRecord> Job() {
  return {PathOf(Ball(2), 0.05, {{-3, 5, 4}, {15, 5.5, 4.5}})};
}

TEST(SweepCallbacks, PercentagesRiseFromOneToAHundred) {
  const SweepResult run = RunSweep(Block(), Job());
  const std::vector<int>& percentages = run.dialog.percentages;
  ASSERT_FALSE(percentages.empty());
  EXPECT_EQ(percentages.front(), 1);
  EXPECT_EQ(percentages.back(), 100);
  EXPECT_TRUE(std::is_sorted(percentages.begin(), percentages.end()));
}

TEST(SweepCallbacks, StagesBeginWithTextsThatADialogKnows) {
  const SweepResult run = RunSweep(Block(), Job());
  const std::vector<std::string> stages = run.dialog.Stages();
  const std::vector<std::string> starts = {"Reading",    "Preparing",  "Initialising", "Sweeping",
                                           "Generating", "Optimising", "Cleaning",     "Writing"};
  ASSERT_EQ(stages.size(), starts.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    EXPECT_EQ(stages[i].substr(0, starts[i].size()), starts[i]);
  }
}

TEST(SweepCallbacks, NothingIsCalledAfterTheOutputIsClosed) {
  const SweepResult run = RunSweep(Block(), Job());
  ASSERT_EQ(run.events.size(), 2U);
  EXPECT_EQ(run.events[0], "Reset");
  EXPECT_EQ(run.events[1], "Close after " + std::to_string(run.dialog.calls.size()));
}

TEST(SweepCallbacks, StopAtAnyCallLeavesTheOutputUnclosedAndTheNextRunWorks) {
  const SweepResult whole = RunSweep(Block(), Job());
  ASSERT_GT(whole.mesh.facets.size(), 100U);
  bool ended = false;
  for (int k = 1; !ended; ++k) {
    ASSERT_LT(k, 2000);
    const SweepResult run = RunSweep(Block(), Job(), k);
    ended = !run.stopped;
    if (ended) break;
    EXPECT_EQ(run.closes, 0) << "stopped at call " << k;
    // The only calls of the writing stage that can come in an untouched output are its first ones.
    EXPECT_LE(run.resets, 1);
  }
  const SweepResult again = RunSweep(Block(), Job());
  EXPECT_EQ(again.mesh.vertices, whole.mesh.vertices);
}

TEST(SweepCallbacks, OutputWithoutMemoryIsAFatalErrorAtEveryPlace) {
  const SweepResult whole = RunSweep(Block(), Job());
  const std::size_t all = whole.mesh.vertices.size() + whole.mesh.facets.size();
  for (const std::size_t memory : {std::size_t{0}, std::size_t{1}, whole.mesh.vertices.size() - 1,
                                   whole.mesh.vertices.size(), all - 1}) {
    const SweepResult run = RunSweep(Block(), Job(), 0, memory);
    ASSERT_EQ(run.dialog.errors.size(), 1U);
    EXPECT_EQ(run.dialog.errors[0], "Memory limit reached.");
    EXPECT_EQ(run.closes, 0);
  }
}

}  // namespace
}  // namespace sweep_test
