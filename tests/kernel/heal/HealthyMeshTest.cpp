// What is sound already comes out as it went in, whatever the tolerance.

#include <gtest/gtest.h>

#include "HealRun.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

using support::Box;

TEST(HealHealthyMesh, BoxComesOutByteForByte) {
  ExpectUnchanged(RunHeal(Box({0, 0, 0}, {3, 4, 5}, 7), 0.01));
}

TEST(HealHealthyMesh, ToleranceAboveTheWholeBoxChangesNothing) {
  ExpectUnchanged(RunHeal(Box({0, 0, 0}, {3, 4, 5}, 7), 100));
}

TEST(HealHealthyMesh, TorusComesOutByteForByte) { ExpectUnchanged(RunHeal(Torus(60, 30), 0.01)); }

TEST(HealHealthyMesh, TorusFarFromTheOriginComesOutByteForByte) {
  ExpectUnchanged(RunHeal(Torus(40, 20, {1e6, -1e6, 3e5}), 0.01));
}

TEST(HealHealthyMesh, BodiesThatTouchFaceToFaceWithVerticesOfTheirOwnStayTwo) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  Add(mesh, Box({1, 0, 0}, {2, 1, 1}, 2));
  ExpectUnchanged(RunHeal(mesh, 0.01));
}

TEST(HealHealthyMesh, BodiesWhoseFacesOverlapPartlyOnlyTouch) {
  formats::Mesh mesh = Box({0, 0, 0}, {2, 2, 2}, 1);
  Add(mesh, Box({0.5, 0.5, 2}, {3, 1.5, 3}, 2));
  ExpectUnchanged(RunHeal(mesh, 0.01));
}

TEST(HealHealthyMesh, CavityKeepsFacingInwards) {
  formats::Mesh mesh = Box({0, 0, 0}, {9, 9, 9}, 1);
  Add(mesh, Reversed(Box({3, 3, 3}, {5, 5, 5}, 2)));
  ExpectUnchanged(RunHeal(mesh, 0.01));
}

TEST(HealHealthyMesh, BodyInACavityKeepsFacingOutwards) {
  formats::Mesh mesh = Box({4, 4, 4}, {4.5, 4.5, 4.5}, 3);
  Add(mesh, Reversed(Box({3, 3, 3}, {5, 5, 5}, 2)));
  Add(mesh, Box({0, 0, 0}, {9, 9, 9}, 1));
  ExpectUnchanged(RunHeal(mesh, 0.01));
}

TEST(HealHealthyMesh, VertexThatNoFacetUsesStays) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  mesh.vertices.push_back({5, 5, 5});
  ExpectUnchanged(RunHeal(mesh, 0.01));
}

TEST(HealHealthyMesh, EmptySurfaceIsWrittenWithAWarning) {
  const HealResult run = RunHeal({}, 0.01);
  EXPECT_TRUE(run.output == run.input);
  EXPECT_EQ(run.dialog.warnings, (std::vector<std::string>{"the surface has no facets"}));
}

TEST(HealHealthyMesh, SurfaceOfNothingButFlatFacetsComesOutEmptyWithAWarning) {
  formats::Mesh mesh;
  mesh.vertices = {{{0, 0, 0}}, {{1, 0, 0}}, {{2, 0, 0}}};
  mesh.facets = {{{0, 1, 2}, 1}, {{0, 0, 1}, 1}};
  const HealResult run = RunHeal(mesh, 0.01);
  EXPECT_EQ(run.dialog.warnings, (std::vector<std::string>{"the surface has no facets"}));
  EXPECT_TRUE(run.mesh.facets.empty());
  EXPECT_NE(run.output, kOlderOutput);
}

TEST(HealHealthyMesh, ToleranceOfZeroIsTaken) { ExpectUnchanged(RunHeal(Torus(20, 10), 0)); }

}  // namespace
}  // namespace heal_test
