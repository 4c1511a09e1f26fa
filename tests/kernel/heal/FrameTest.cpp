// Moving and scaling the input by powers of two, which round nothing away, moves and scales the
// result by the same.

#include <gtest/gtest.h>

#include "HealRun.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

// Coordinates are multiples of 1/1024, so that adding 4096 is exact.
formats::Mesh Damaged() {
  formats::Mesh mesh = Torus(24, 16);
  for (auto& vertex : mesh.vertices) {
    for (double& x : vertex) x = static_cast<double>(static_cast<int>(x * 1024)) / 1024;
  }
  for (std::size_t f = 0; f < mesh.facets.size(); f += 11) {
    std::int32_t& vertex = mesh.facets[f].vertices[f % 3];
    auto place = mesh.vertices[static_cast<std::size_t>(vertex)];
    place[f % 3] += 3.0 / 1024;
    vertex = static_cast<std::int32_t>(mesh.vertices.size());
    mesh.vertices.push_back(place);
  }
  mesh.facets.erase(mesh.facets.begin() + 40, mesh.facets.begin() + 46);
  Add(mesh, support::Box({20, 20, 20}, {22, 22, 22}, 1));
  Add(mesh, support::Box({21, 21, 21}, {23, 23, 23}, 2));
  return mesh;
}

formats::Mesh Transformed(formats::Mesh mesh, double factor, const support::Point& by) {
  for (auto& vertex : mesh.vertices) {
    for (std::size_t i = 0; i < 3; ++i) vertex[i] = factor * vertex[i] + by[i];
  }
  return mesh;
}

void ExpectSame(const formats::Mesh& a, const formats::Mesh& b) {
  ASSERT_EQ(a.vertices.size(), b.vertices.size());
  ASSERT_EQ(a.facets.size(), b.facets.size());
  for (std::size_t v = 0; v < a.vertices.size(); ++v) EXPECT_EQ(a.vertices[v], b.vertices[v]) << v;
  for (std::size_t f = 0; f < a.facets.size(); ++f) {
    EXPECT_EQ(a.facets[f].vertices, b.facets[f].vertices) << f;
    EXPECT_EQ(a.facets[f].colour, b.facets[f].colour) << f;
  }
}

TEST(HealFrame, MovedInputGivesTheMovedResult) {
  const HealResult here = RunHeal(Damaged(), 0.01);
  ExpectMended(here);
  const support::Point by = {4096, -8192, 2048};
  ExpectSame(RunHeal(Transformed(Damaged(), 1, by), 0.01).mesh, Transformed(here.mesh, 1, by));
}

TEST(HealFrame, ScaledInputAndToleranceGiveTheScaledResult) {
  const HealResult here = RunHeal(Damaged(), 0.01);
  ExpectSame(RunHeal(Transformed(Damaged(), 32, {0, 0, 0}), 0.32).mesh,
             Transformed(here.mesh, 32, {0, 0, 0}));
}

}  // namespace
}  // namespace heal_test
