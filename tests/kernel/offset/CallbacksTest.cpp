// Progress, stops, threads, memory, the log and bad input of the offset.

#include <gtest/gtest.h>
#include <limits>

#include "OffsetRun.h"
#include "Solids.h"
#include "kernel/common/Workers.h"
#include "support/EnvironmentVariable.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace offset_test {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

formats::Mesh Body() { return compare_test::PittedBlock(30, 12); }

void ExpectSame(const SweepResult& a, const SweepResult& b) {
  EXPECT_TRUE(a.mesh.vertices == b.mesh.vertices);
  ASSERT_EQ(a.mesh.facets.size(), b.mesh.facets.size());
  for (std::size_t f = 0; f < a.mesh.facets.size(); ++f) {
    EXPECT_EQ(a.mesh.facets[f].vertices, b.mesh.facets[f].vertices);
    EXPECT_EQ(a.mesh.facets[f].colour, b.mesh.facets[f].colour);
  }
}

TEST(OffsetCallbacks, StagesBeginWithTextsThatADialogKnows) {
  EXPECT_EQ(RunOffset(Body(), 3, 45).dialog.Stages(),
            (std::vector<std::string>{"Preparing surface", "Initialising surface",
                                      "Offsetting (phase 2)... 1", "Optimising surface",
                                      "Scanning surface", "Cleaning surface", "Writing surface"}));
}

TEST(OffsetCallbacks, CountsOfAStageRiseFromOneToItsTotal) {
  const SweepResult run = RunOffset(Body(), 3, 45);
  for (const int total : run.dialog.percentages) EXPECT_EQ(total, 1000);
  bool isOpen = false;
  int last = 0;
  for (const std::string& call : run.dialog.calls) {
    if (call.rfind("progress ", 0) == 0) {
      EXPECT_FALSE(isOpen) << "a stage within a stage";
      isOpen = true;
      last = 0;
    } else if (call.rfind("count ", 0) == 0) {
      const int count = std::stoi(call.substr(6));
      EXPECT_TRUE(last > 0 ? count > last : count == 1) << count << " after " << last;
      last = count;
    } else if (call == "end") {
      EXPECT_EQ(last, 1000);
      isOpen = false;
    }
  }
  EXPECT_FALSE(isOpen);
}

TEST(OffsetCallbacks, NothingIsCalledAfterTheOutputIsClosed) {
  const SweepResult run = RunOffset(Body(), 3, 45);
  EXPECT_EQ(run.events, (std::vector<std::string>{
                            "Reset", "Close after " + std::to_string(run.dialog.calls.size())}));
}

TEST(OffsetCallbacks, StopAtAnyCallLeavesTheOutputUnclosedAndTheNextRunWorks) {
  const formats::Mesh body = support::Box({0, 0, 0}, {4, 3, 2}, 1);
  const SweepResult whole = RunOffset(body, 1, 30);
  ExpectSound(whole);
  int stops = 0;
  for (int k = 1;; ++k) {
    ASSERT_LT(k, 2000);
    const SweepResult run = RunOffset(body, 1, 30, k);
    if (!run.stopped) break;
    ++stops;
    EXPECT_EQ(run.closes, 0) << "stopped at call " << k;
  }
  EXPECT_GE(stops, 18);
  ExpectSame(RunOffset(body, 1, 30), whole);
}

TEST(OffsetCallbacks, OutputWithoutMemoryIsAFatalErrorAtEveryPlace) {
  const formats::Mesh body = support::Box({0, 0, 0}, {4, 3, 2}, 1);
  const SweepResult whole = RunOffset(body, 1, 45);
  const std::size_t vertices = whole.mesh.vertices.size();
  for (const std::size_t memory : {std::size_t{0}, std::size_t{1}, vertices - 1, vertices,
                                   vertices + whole.mesh.facets.size() - 1}) {
    const SweepResult run = RunOffset(body, 1, 45, 0, memory);
    EXPECT_EQ(run.dialog.errors, std::vector<std::string>{"Memory limit reached."});
    EXPECT_EQ(run.closes, 0);
  }
}

TEST(OffsetCallbacks, EveryNumberOfThreadsGivesTheSameResult) {
  const formats::Mesh torus = compare_test::Torus(20, 12);
  kernel::LimitWorkers(1);
  const SweepResult one = RunOffset(torus, -1, 30);
  for (const unsigned threads : {2U, 5U}) {
    kernel::LimitWorkers(threads);
    ExpectSame(RunOffset(torus, -1, 30), one);
  }
  kernel::LimitWorkers(0);
  ExpectSound(one);
}

TEST(OffsetCallbacks, LogTakesStagesAndMessages) {
  const support::TempDirectory directory;
  const support::EnvironmentVariable log("QZ_KERNEL_LOG", directory / "kernel.log");
  RunOffset(compare_test::Reversed(Body()), -200);
  EXPECT_EQ(support::ReadWholeFile(directory / "kernel.log"),
            "stage: Preparing surface\n"
            "warning: the surface's facets faced inwards and have been turned\n"
            "stage: Initialising surface\n"
            "stage: Offsetting (phase 2)... 1\n"
            "stage: Optimising surface\n"
            "stage: Scanning surface\n"
            "stage: Cleaning surface\n"
            "warning: nothing is left of the solid\n"
            "stage: Writing surface\n");
}

TEST(OffsetInput, ThatFacesInwardsIsTurned) {
  const SweepResult turned = RunOffset(compare_test::Reversed(Body()), -3, 20);
  EXPECT_EQ(turned.dialog.warnings,
            std::vector<std::string>{"the surface's facets faced inwards and have been turned"});
  EXPECT_NEAR(support::Volume(turned.mesh), support::Volume(RunOffset(Body(), -3, 20).mesh), 1e-6);
}

TEST(OffsetInput, FacetsThatShareNoVerticesByNumberAreJoinedByPlace) {
  formats::Mesh soup;
  const formats::Mesh body = Body();
  for (const formats::Facet& facet : body.facets) {
    const auto first = static_cast<std::int32_t>(soup.vertices.size());
    for (const support::Point& corner : support::Corners(body, facet)) {
      soup.vertices.push_back(corner);
    }
    soup.facets.push_back({{first, first + 1, first + 2}, facet.colour});
  }
  EXPECT_EQ(support::Volume(RunOffset(soup, -3, 20).mesh),
            support::Volume(RunOffset(body, -3, 20).mesh));
}

TEST(OffsetInput, WithoutFacetsResetsAndClosesAndWarns) {
  for (const double distance : {1.0, -1.0}) {
    const SweepResult run = RunOffset({}, distance);
    EXPECT_EQ(run.events.size(), 2U);
    EXPECT_EQ(run.closes, 1);
    EXPECT_EQ(run.dialog.warnings, std::vector<std::string>{"the surface has no facets"});
  }
}

TEST(OffsetInput, FacetsWithoutAreaAreFine) {
  formats::Mesh mesh = support::Box({0, 0, 0}, {4, 4, 4}, 1);
  // The edge from corner 0 to corner 1 gets a vertex on one side only, and a facet along the edge.
  mesh.vertices.push_back({2, 0, 0});
  mesh.facets[1] = {{0, 3, 8}, 1};
  mesh.facets.push_back({{8, 3, 1}, 1});
  mesh.facets.push_back({{0, 8, 1}, 1});
  ASSERT_EQ(support::ClosedFault(mesh), "");
  const SweepResult run = RunOffset(mesh, 1, 20);
  ExpectSound(run);
  EXPECT_NEAR(support::Volume(run.mesh),
              support::Volume(RunOffset(support::Box({0, 0, 0}, {4, 4, 4}, 1), 1, 20).mesh),
              2 * Allowed(1, 20) * AreaOf(run.mesh));
}

void ExpectFatal(const SweepResult& run, const std::string& message) {
  EXPECT_EQ(run.dialog.errors, std::vector<std::string>{message});
  EXPECT_EQ(run.resets, 0);
  EXPECT_EQ(run.closes, 0);
}

TEST(OffsetBadInput, NegativeDistanceOfAnOpenMeshIsFatal) {
  formats::Mesh open = Body();
  open.facets.pop_back();
  ExpectFatal(RunOffset(open, -1),
              "the surface is open: it has no inside that the distance could be taken from");
  EXPECT_TRUE(RunOffset(open, 3, 45).dialog.errors.empty());
}

TEST(OffsetBadInput, DistancesThatAreNoneAreFatal) {
  for (const double distance : {0.0, -0.0, kNan, kInfinity, -kInfinity}) {
    ExpectFatal(RunOffset(Body(), distance), "distance: not a number other than 0");
  }
  ExpectFatal(RunOffset(Body(), 1e308), "distance: too large to measure");
}

TEST(OffsetBadInput, AnglesOutsideTheirRangeAreFatal) {
  for (const double degrees : {-1e-9, 90.0000001, kNan, kInfinity}) {
    ExpectFatal(RunOffset(Body(), 1, degrees), "angle: not a number from 0 to 90");
  }
}

TEST(OffsetBadInput, CoordinatesThatAreNotFiniteAreNamed) {
  formats::Mesh bad = Body();
  bad.vertices[4][1] = kNan;
  ExpectFatal(RunOffset(bad, 1), "surface vertex 5: a coordinate is not finite");
  bad.vertices[4][1] = -kInfinity;
  ExpectFatal(RunOffset(bad, 1), "surface vertex 5: a coordinate is not finite");
  ExpectFatal(RunOffset(support::Box({-1e308, 0, 0}, {1e308, 1, 1}, 1), 1),
              "the surface is too large to measure");
}

}  // namespace
}  // namespace offset_test
