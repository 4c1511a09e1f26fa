// Progress, stops, threads, memory and messages: what a caller of a comparison can see besides the
// result.

#include <algorithm>
#include <gtest/gtest.h>

#include "CompareRun.h"
#include "Solids.h"
#include "kernel/common/Workers.h"
#include "support/EnvironmentVariable.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace compare_test {
namespace {

SweepResult RunPitted(int throwAt = 0, std::size_t memory = SIZE_MAX) {
  return RunCompare(Block(), PittedBlock(20, 5), {{-2, 0.05}, {1, 2}, 3}, throwAt, memory);
}

void ExpectSame(const SweepResult& a, const SweepResult& b) {
  EXPECT_TRUE(a.mesh.vertices == b.mesh.vertices);
  ASSERT_EQ(a.mesh.facets.size(), b.mesh.facets.size());
  for (std::size_t f = 0; f < a.mesh.facets.size(); ++f) {
    EXPECT_EQ(a.mesh.facets[f].vertices, b.mesh.facets[f].vertices);
    EXPECT_EQ(a.mesh.facets[f].colour, b.mesh.facets[f].colour);
  }
}

TEST(CompareCallbacks, PercentagesRiseFromOneToAHundred) {
  const std::vector<int> percentages = RunPitted().dialog.percentages;
  ASSERT_FALSE(percentages.empty());
  EXPECT_EQ(percentages.front(), 1);
  EXPECT_EQ(percentages.back(), 100);
  EXPECT_TRUE(std::is_sorted(percentages.begin(), percentages.end()));
}

TEST(CompareCallbacks, StagesBeginWithTextsThatADialogKnows) {
  EXPECT_EQ(RunPitted().dialog.Stages(),
            (std::vector<std::string>{"Reading part and stock", "Preparing stock", "Comparing",
                                      "Writing result"}));
}

TEST(CompareCallbacks, NothingIsCalledAfterTheOutputIsClosed) {
  const SweepResult run = RunPitted();
  EXPECT_EQ(run.events, (std::vector<std::string>{
                            "Reset", "Close after " + std::to_string(run.dialog.calls.size())}));
}

TEST(CompareCallbacks, StopAtAnyCallLeavesTheOutputUnclosedAndTheNextRunWorks) {
  const SweepResult whole = RunPitted();
  ASSERT_GT(whole.mesh.facets.size(), 1000U);
  bool ended = false;
  int stops = 0;
  for (int k = 1; !ended; ++k) {
    ASSERT_LT(k, 2000);
    const SweepResult run = RunPitted(k);
    ended = !run.stopped;
    if (ended) break;
    ++stops;
    EXPECT_EQ(run.closes, 0) << "stopped at call " << k;
  }
  EXPECT_GE(stops, 8);
  ExpectSame(RunPitted(), whole);
}

TEST(CompareCallbacks, OutputWithoutMemoryIsAFatalErrorAtEveryPlace) {
  const SweepResult whole = RunPitted();
  const std::size_t vertices = whole.mesh.vertices.size();
  for (const std::size_t memory : {std::size_t{0}, std::size_t{1}, vertices - 1, vertices,
                                   vertices + whole.mesh.facets.size() - 1}) {
    const SweepResult run = RunPitted(0, memory);
    EXPECT_EQ(run.dialog.errors, std::vector<std::string>{"Memory limit reached."});
    EXPECT_EQ(run.closes, 0);
  }
}

TEST(CompareCallbacks, EveryNumberOfThreadsGivesTheSameResult) {
  const Bands bands = {{-0.3, 0.1, 0.3}, {1, 2, 3}, 4};
  kernel::LimitWorkers(1);
  const SweepResult one = RunCompare(Torus(16, 10), Torus(12, 8), bands);
  for (const unsigned threads : {2U, 5U}) {
    kernel::LimitWorkers(threads);
    ExpectSame(RunCompare(Torus(16, 10), Torus(12, 8), bands), one);
  }
  kernel::LimitWorkers(0);
  ExpectSound(one);
}

TEST(CompareCallbacks, LogTakesStagesAndMessages) {
  const support::TempDirectory directory;
  const support::EnvironmentVariable log("QZ_KERNEL_LOG", directory / "kernel.log");
  RunCompare(Reversed(Block()), Reversed(Block()), kThree);
  EXPECT_EQ(support::ReadWholeFile(directory / "kernel.log"),
            "stage: Reading part and stock\n"
            "warning: the stock's facets faced inwards and have been turned\n"
            "warning: the part's facets faced inwards and have been turned\n"
            "stage: Preparing stock\n"
            "stage: Comparing\n"
            "stage: Writing result\n");
}

TEST(CompareCallbacks, MovedAndScaledInputGivesTheMovedAndScaledResult) {
  const Bands bands = {{-2, 0.05}, {1, 2}, 3};
  const SweepResult here = RunPitted();
  // Powers of two round nothing away.
  const support::Point by = {4096, -8192, 2048};
  SweepResult moved = RunCompare(Moved(Block(), 1, by), Moved(PittedBlock(20, 5), 1, by), bands);
  ASSERT_EQ(moved.mesh.vertices.size(), here.mesh.vertices.size());
  moved.mesh = Moved(moved.mesh, 1, {-by[0], -by[1], -by[2]});
  for (std::size_t v = 0; v < here.mesh.vertices.size(); ++v) {
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_NEAR(moved.mesh.vertices[v][k], here.mesh.vertices[v][k], 1e-10);
    }
  }
  for (const int colour : {1, 2, 3}) {
    EXPECT_NEAR(AreaOf(moved.mesh, colour), AreaOf(here.mesh, colour), 1e-6);
  }
  SweepResult scaled =
      RunCompare(Moved(Block(), 32, {0, 0, 0}), Moved(PittedBlock(20, 5), 32, {0, 0, 0}),
                 {{-64, 1.6}, {1, 2}, 3});
  scaled.mesh = Moved(scaled.mesh, 1.0 / 32, {0, 0, 0});
  ExpectSame(scaled, here);
}

}  // namespace
}  // namespace compare_test
