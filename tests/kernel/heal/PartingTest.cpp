// Edges of more than two facets, and bodies that cross.

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "HealRun.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

using support::Box;
using support::Volume;

double Area(const formats::Mesh& mesh) {
  double sum = 0;
  for (const formats::Facet& facet : mesh.facets) {
    const auto c = support::Corners(mesh, facet);
    sum +=
        support::Length(support::Cross(support::Minus(c[1], c[0]), support::Minus(c[2], c[0]))) / 2;
  }
  return sum;
}

std::int32_t VertexAt(const formats::Mesh& mesh, const support::Point& place) {
  const auto found = std::find(mesh.vertices.begin(), mesh.vertices.end(), place);
  EXPECT_NE(found, mesh.vertices.end());
  return static_cast<std::int32_t>(found - mesh.vertices.begin());
}

TEST(HealParting, BodiesThatShareAnEdgeGetVerticesOfTheirOwn) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  Add(mesh, Box({1, 1, 0}, {2, 2, 1}, 2));
  // A repeated facet makes it a case for mending, in which the vertices at one place are joined.
  mesh.facets.push_back(mesh.facets[0]);
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 16U);
  EXPECT_EQ(run.mesh.facets.size(), 24U);
  EXPECT_EQ(Components(run.mesh), 2U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 2);
}

TEST(HealParting, BodiesThatShareAFaceGetFacesOfTheirOwn) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  Add(mesh, Box({0, 0, 1}, {1, 1, 2}, 2));
  mesh.facets.push_back(mesh.facets[0]);
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 16U);
  EXPECT_EQ(run.mesh.facets.size(), 24U);
  EXPECT_EQ(Components(run.mesh), 2U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 2);
}

TEST(HealParting, BodiesThatShareAVertexGetOneEach) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  Add(mesh, Box({1, 1, 1}, {2, 2, 2}, 2));
  mesh.facets.push_back(mesh.facets[0]);
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 16U);
}

TEST(HealParting, FinOnAnEdgeIsRemovedWithAWarning) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  const std::int32_t a = VertexAt(mesh, {0, 0, 1}), b = VertexAt(mesh, {1, 0, 1});
  mesh.vertices.push_back({0.5, -1, 2});
  mesh.facets.push_back({{a, b, 8}, 5});
  const HealResult run = RunHeal(mesh, 0.01);
  EXPECT_EQ(run.dialog.warnings,
            (std::vector<std::string>{"1 facets that hang on a closed surface have been removed"}));
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_EQ(run.mesh.vertices.size(), 8U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 1);
}

TEST(HealParting, WallAcrossTheInsideIsRemovedWithAWarning) {
  // Two cubes on each other without the faces in between but for a wall of one layer.
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  Add(mesh, Box({0, 0, 1}, {1, 1, 2}, 2));
  int layers = 0;
  std::erase_if(mesh.facets, [&](const formats::Facet& facet) {
    const auto c = support::Corners(mesh, facet);
    const bool between = c[0][2] == 1 && c[1][2] == 1 && c[2][2] == 1;
    return between && ++layers > 2;
  });
  ASSERT_EQ(layers, 4);
  const HealResult run = RunHeal(mesh, 0.01);
  EXPECT_EQ(run.dialog.warnings,
            (std::vector<std::string>{"2 facets that hang on a closed surface have been removed"}));
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(run.mesh.facets.size(), 20U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 2);
}

TEST(HealParting, BoxesThatOverlapAtTheirCornersAreUnited) {
  formats::Mesh mesh = Box({0, 0, 0}, {2, 2, 2}, 1);
  Add(mesh, Box({1, 1, 1}, {3, 3, 3}, 2));
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_EQ(Components(run.mesh), 1U);
  EXPECT_NEAR(Volume(run.mesh), 15, 1e-12);
  // Each box loses three squares of side 1.
  EXPECT_NEAR(Area(run.mesh), 2 * (24 - 3), 1e-12);
  EXPECT_GT(CountColour(run.mesh, 1), 0U);
  EXPECT_GT(CountColour(run.mesh, 2), 0U);
  EXPECT_EQ(CountColour(run.mesh, 1) + CountColour(run.mesh, 2), run.mesh.facets.size());
  // No corner of a box has moved but those inside the other, which are gone.
  for (const auto& vertex : Box({0, 0, 0}, {2, 2, 2}, 1).vertices) {
    const bool stays = vertex != support::Point{2, 2, 2};
    EXPECT_EQ(std::count(run.mesh.vertices.begin(), run.mesh.vertices.end(), vertex),
              stays ? 1 : 0);
  }
  // What came out is healthy.
  ExpectUnchanged(RunHeal(run.mesh, 0.01));
}

TEST(HealParting, BoxesThatOverlapWithTheirSidesInOnePlaneAreUnited) {
  formats::Mesh mesh = Box({0, 0, 0}, {2, 1, 1}, 1);
  Add(mesh, Box({1, 0, 0}, {3, 1, 1}, 2));
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_NEAR(Volume(run.mesh), 3, 1e-12);
  EXPECT_NEAR(Area(run.mesh), 14, 1e-12);
}

TEST(HealParting, BodiesThatCrossNothingStayAsTheyWereBesideThoseThatDo) {
  formats::Mesh mesh = Torus(20, 12, {50, 0, 0});
  const std::size_t vertices = mesh.vertices.size();
  Add(mesh, Box({0, 0, 0}, {2, 2, 2}, 1));
  Add(mesh, Box({1, 1, 1}, {3, 3, 3}, 2));
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  ASSERT_GT(run.mesh.vertices.size(), vertices);
  for (std::size_t v = 0; v < vertices; ++v) EXPECT_EQ(run.mesh.vertices[v], mesh.vertices[v]);
  for (std::size_t f = 0; f < 480; ++f) {
    EXPECT_EQ(run.mesh.facets[f].vertices, mesh.facets[f].vertices);
  }
}

// A plate of 8 by 8 cells of side 1 and a thickness of 0.1.
formats::Mesh Plate() {
  constexpr int kCells = 8, kAcross = kCells + 1;
  formats::Mesh mesh;
  for (const double z : {0.0, 0.1}) {
    for (int x = 0; x < kAcross; ++x) {
      for (int y = 0; y < kAcross; ++y) mesh.vertices.push_back({x * 1.0, y * 1.0, z});
    }
  }
  const auto at = [](int x, int y, int top) { return (top * kAcross + x) * kAcross + y; };
  const auto add = [&](int a, int b, int c, int d) {
    mesh.facets.push_back({{a, b, c}, 3});
    mesh.facets.push_back({{a, c, d}, 3});
  };
  for (int i = 0; i < kCells; ++i) {
    for (int j = 0; j < kCells; ++j) {
      add(at(i, j, 0), at(i, j + 1, 0), at(i + 1, j + 1, 0), at(i + 1, j, 0));
      add(at(i, j, 1), at(i + 1, j, 1), at(i + 1, j + 1, 1), at(i, j + 1, 1));
    }
    add(at(i, 0, 0), at(i + 1, 0, 0), at(i + 1, 0, 1), at(i, 0, 1));
    add(at(i + 1, kCells, 0), at(i, kCells, 0), at(i, kCells, 1), at(i + 1, kCells, 1));
    add(at(0, i + 1, 0), at(0, i, 0), at(0, i, 1), at(0, i + 1, 1));
    add(at(kCells, i, 0), at(kCells, i + 1, 0), at(kCells, i + 1, 1), at(kCells, i, 1));
  }
  return mesh;
}

TEST(HealParting, BodyThatCrossesItselfWithinTheToleranceIsMendedThere) {
  ExpectUnchanged(RunHeal(Plate(), 0.5));
  formats::Mesh mesh = Plate();
  mesh.vertices[static_cast<std::size_t>(VertexAt(mesh, {4, 4, 0.1}))][2] = -0.02;
  EXPECT_EQ(RunHeal(mesh, 0).dialog.warnings.size(), 1U) << "it does cross itself";
  const HealResult run = RunHeal(mesh, 0.5);
  ExpectMended(run);
  EXPECT_NEAR(Volume(run.mesh), 64 * 0.1, 1);
  EXPECT_EQ(CountColour(run.mesh, 3), run.mesh.facets.size());
}

TEST(HealParting, BodyThatCrossesItselfBeyondTheToleranceIsLeftWithTheCount) {
  // A corner of the top pushed out through the bottom.
  formats::Mesh mesh = Box({0, 0, 0}, {4, 4, 4}, 1);
  for (auto& vertex : mesh.vertices) {
    if (vertex == support::Point{0, 0, 4}) vertex = {1, 1.5, -3};
  }
  const HealResult run = RunHeal(mesh, 1e-6);
  ASSERT_EQ(run.dialog.warnings.size(), 1U);
  EXPECT_NE(run.dialog.warnings[0].find(" pairs of facets that cross could not be parted"),
            std::string::npos);
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(run.mesh.vertices, mesh.vertices);
}

}  // namespace
}  // namespace heal_test
