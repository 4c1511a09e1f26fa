// Progress, stops, threads and bad input of the silhouette.

#include <gtest/gtest.h>
#include <limits>

#include "OutlineRun.h"
#include "kernel/common/Workers.h"
#include "support/geometry/MeshChecks.h"

namespace outline_test {
namespace {

const std::vector<std::string> kFiles = {"in.iff", "out.crv"};

TEST(SilhouetteCallbacks, StagesBeginWithTextsThatADialogKnows) {
  const SilhouetteResult run = RunSilhouette(Torus(10, 4, 40, 24));
  const std::vector<std::string> starts = {"Reading", "Preparing", "Generating", "Writing"};
  const std::vector<std::string> stages = run.dialog.Stages();
  ASSERT_EQ(stages.size(), starts.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    EXPECT_EQ(stages[i].substr(0, starts[i].size()), starts[i]);
  }
  EXPECT_EQ(run.dialog.calls.back(), "end");
}

TEST(SilhouetteCallbacks, StopAtAnyCallLeavesTheOlderOutputAndNoOtherFile) {
  const formats::Mesh mesh = Torus(10, 4, 40, 24);
  const SilhouetteResult whole = RunSilhouette(mesh);
  int stops = 0;
  for (int k = 1; k < 1000; ++k) {
    const SilhouetteResult run = RunSilhouette(mesh, 0, k);
    EXPECT_EQ(run.names, kFiles);
    if (!run.stopped) {
      EXPECT_TRUE(run.output == whole.output);
      break;
    }
    ++stops;
    EXPECT_EQ(run.output, kOlderOutput) << "stopped at call " << k;
  }
  EXPECT_GE(stops, 16);
  EXPECT_LT(stops, 999);
}

TEST(SilhouetteCallbacks, EveryNumberOfThreadsGivesTheSameBytes) {
  const formats::Mesh mesh = Torus(10, 4, 150, 90);
  const SilhouetteResult all = RunSilhouette(mesh);
  for (const unsigned threads : {1U, 2U, 5U}) {
    kernel::LimitWorkers(threads);
    EXPECT_TRUE(RunSilhouette(mesh).output == all.output) << threads;
  }
  kernel::LimitWorkers(0);
}

void ExpectFailure(const SilhouetteResult& run, const std::string& message) {
  ASSERT_EQ(run.dialog.errors.size(), 1U);
  EXPECT_NE(run.dialog.errors[0].find(message), std::string::npos) << run.dialog.errors[0];
  EXPECT_EQ(run.output, kOlderOutput);
  EXPECT_EQ(run.names, kFiles);
}

TEST(SilhouetteBadInput, CoordinateThatIsNotFiniteIsNamed) {
  formats::Mesh mesh = support::Box({0, 0, 0}, {1, 1, 1}, 1);
  mesh.vertices[4][1] = std::numeric_limits<double>::quiet_NaN();
  ExpectFailure(RunSilhouette(mesh), "vertex 5: a coordinate is not finite");
  mesh.vertices[4][1] = std::numeric_limits<double>::infinity();
  ExpectFailure(RunSilhouette(mesh), "vertex 5: a coordinate is not finite");
}

TEST(SilhouetteBadInput, DistanceThatIsNoLengthIsNamed) {
  const formats::Mesh mesh = support::Box({0, 0, 0}, {1, 1, 1}, 1);
  for (const double distance :
       {-1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    ExpectFailure(RunSilhouette(mesh, distance), "distance: not a number of 0 or more");
  }
}

TEST(SilhouetteBadInput, FileThatIsNoSurfaceLeavesTheOutput) {
  ExpectFailure(RunSilhouetteOnBytes(""), "in.iff");
  ExpectFailure(RunSilhouetteOnBytes("binary surface"), "in.iff");
}

TEST(SilhouetteBadInput, SurfaceTooLargeToMeasureIsRefused) {
  ExpectFailure(RunSilhouette(support::Box({-1e308, 0, 0}, {1e308, 1, 1}, 1)), "too large");
}

TEST(SilhouetteBadInput, WithoutAShadowTheFileIsEmptyAndAWarningIsGiven) {
  formats::Mesh upright;
  upright.vertices = {{0, 0, 0}, {1, 1, 0}, {0, 0, 1}};
  upright.facets = {{{0, 1, 2}, 1}};
  for (const formats::Mesh& mesh : {formats::Mesh(), upright}) {
    const SilhouetteResult run = RunSilhouette(mesh);
    EXPECT_EQ(run.output, std::string("binary tree_curves") + std::string(8, '\0'));
    EXPECT_EQ(run.dialog.warnings, std::vector<std::string>{"the surface has no shadow"});
    EXPECT_TRUE(run.dialog.errors.empty());
  }
}

}  // namespace
}  // namespace outline_test
