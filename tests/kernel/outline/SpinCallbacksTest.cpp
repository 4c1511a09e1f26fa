// Progress, stops, threads, refusals and bad input of the spun outline.

#include <gtest/gtest.h>
#include <limits>

#include "OutlineRun.h"
#include "kernel/common/Workers.h"
#include "support/geometry/MeshChecks.h"

namespace outline_test {
namespace {

formats::Mesh Body() { return Moved(Ball(4, 24), 1, {0, 10, 0}); }

TEST(SpinCallbacks, StagesBeginWithTextsThatADialogKnows) {
  const SpinResult run = RunSpin(Body());
  const std::vector<std::string> starts = {"Preparing", "Generating", "Writing"};
  const std::vector<std::string> stages = run.dialog.Stages();
  ASSERT_EQ(stages.size(), starts.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    EXPECT_EQ(stages[i].substr(0, starts[i].size()), starts[i]);
  }
}

TEST(SpinCallbacks, StopAtAnyCallNeverClosesTheOutput) {
  const std::size_t all = RunSpin(Body()).channel.points.size();
  int stops = 0;
  for (int k = 1; k < 1000; ++k) {
    const SpinResult run = RunSpin(Body(), 0, k);
    if (!run.stopped) {
      EXPECT_EQ(run.channel.closes, 1);
      EXPECT_EQ(run.channel.points.size(), all);
      break;
    }
    ++stops;
    EXPECT_EQ(run.channel.closes, 0) << "stopped at call " << k;
  }
  EXPECT_GE(stops, 12);
  EXPECT_LT(stops, 999);
}

TEST(SpinCallbacks, EveryNumberOfThreadsGivesTheSamePoints) {
  const SpinResult all = RunSpin(Body());
  for (const unsigned threads : {1U, 2U, 5U}) {
    kernel::LimitWorkers(threads);
    const SpinResult run = RunSpin(Body());
    EXPECT_TRUE(run.channel.points == all.channel.points) << threads;
    EXPECT_TRUE(run.channel.segments == all.channel.segments) << threads;
  }
  kernel::LimitWorkers(0);
}

TEST(SpinRefusal, OfAPointDoublesTheToleranceUntilAllFitAndWarns) {
  const SpinResult exact = RunSpin(Body(), 0.001);
  const SpinResult run = RunSpin(Body(), 0.001, 0, 12);
  EXPECT_GT(run.channel.resets, 2);
  EXPECT_EQ(run.channel.closes, 1);
  EXPECT_LE(run.channel.points.size(), 12U);
  ASSERT_EQ(run.dialog.warnings.size(), 1U);
  const std::string start = "the tolerance is raised to ";
  ASSERT_EQ(run.dialog.warnings[0].substr(0, start.size()), start);
  const double raised = std::stod(run.dialog.warnings[0].substr(start.size()));
  double doubled = 0.001;
  for (int i = 1; i < run.channel.resets; ++i) doubled *= 2;
  EXPECT_NEAR(raised, doubled, 1e-4 * doubled);
  for (const Curve& curve : exact.curves.curves) {
    for (const Point& point : curve) EXPECT_LE(DistanceTo(run.curves, point), doubled);
  }
}

TEST(SpinRefusal, OfTheFirstPointIsFatal) {
  const SpinResult run = RunSpin(Body(), 0, 0, 0);
  EXPECT_EQ(run.dialog.errors, std::vector<std::string>{"the output takes no points"});
  EXPECT_EQ(run.channel.closes, 0);
}

TEST(SpinRefusal, OfMoreThanACurveNeedsAtAnyToleranceIsFatal) {
  const SpinResult run = RunSpin(Body(), 0, 0, 2);
  EXPECT_EQ(run.dialog.errors,
            std::vector<std::string>{"the output takes too few points for the outline"});
  EXPECT_EQ(run.channel.closes, 0);
}

void ExpectFailure(const SpinResult& run, const std::string& message) {
  ASSERT_EQ(run.dialog.errors.size(), 1U);
  EXPECT_NE(run.dialog.errors[0].find(message), std::string::npos) << run.dialog.errors[0];
  EXPECT_EQ(run.channel.resets, 0);
  EXPECT_EQ(run.channel.closes, 0);
}

TEST(SpinBadInput, NumbersThatAreNoneAreNamed) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  ExpectFailure(RunSpin(Body(), nan), "distance: not a number of 0 or more");
  ExpectFailure(RunSpin(Body(), -1), "distance: not a number of 0 or more");
  formats::Mesh mesh = Body();
  mesh.vertices[2][2] = nan;
  ExpectFailure(RunSpin(mesh), "surface vertex 3: a coordinate is not finite");
  ExpectFailure(RunSpin(support::Box({-1e308, 0, 0}, {1e308, 1, 1}, 1)), "too large");
}

TEST(SpinBadInput, ThatCoversNothingResetsAndClosesAndWarns) {
  formats::Mesh across;
  across.vertices = {{3, 1, 0}, {3, 2, 1}, {3, 2, 5}};
  across.facets = {{{0, 1, 2}, 1}};
  for (const formats::Mesh& mesh : {formats::Mesh(), across}) {
    const SpinResult run = RunSpin(mesh);
    EXPECT_EQ(run.channel.resets, 1);
    EXPECT_EQ(run.channel.closes, 1);
    EXPECT_TRUE(run.channel.points.empty());
    EXPECT_EQ(run.dialog.warnings, std::vector<std::string>{"the spun surface covers nothing"});
  }
}

}  // namespace
}  // namespace outline_test
