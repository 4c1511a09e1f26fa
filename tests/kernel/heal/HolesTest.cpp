// Holes and what cannot be closed.

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "HealRun.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

using support::Box;
using support::Volume;

bool IsOnTop(const formats::Mesh& mesh, const formats::Facet& facet) {
  const auto c = support::Corners(mesh, facet);
  return c[0][2] == 1 && c[1][2] == 1 && c[2][2] == 1;
}

formats::Mesh CubeWithoutTop() {
  formats::Mesh cube = Box({0, 0, 0}, {1, 1, 1}, 7);
  std::erase_if(cube.facets, [&](const formats::Facet& f) { return IsOnTop(cube, f); });
  return cube;
}

// A prism over a regular polygon, without its upper end.
formats::Mesh Cup(int corners, double radius, double height) {
  formats::Mesh mesh;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2 * std::numbers::pi * i / corners;
    mesh.vertices.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
    mesh.vertices.push_back({radius * std::cos(angle), radius * std::sin(angle), height});
  }
  mesh.vertices.push_back({0, 0, 0});
  for (int i = 0; i < corners; ++i) {
    const int a = 2 * i, b = 2 * ((i + 1) % corners);
    mesh.facets.push_back({{a, b, b + 1}, 3});
    mesh.facets.push_back({{a, b + 1, a + 1}, 3});
    mesh.facets.push_back({{b, a, 2 * corners}, 3});
  }
  return mesh;
}

TEST(HealHoles, MissingFaceIsFilledInTheColourAroundIt) {
  const HealResult run = RunHeal(CubeWithoutTop(), 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 8U);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_EQ(CountColour(run.mesh, 7), 12U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 1);
}

TEST(HealHoles, FilledFacetTakesTheColourOfANeighbourNotOfFarOnes) {
  formats::Mesh mesh = Box({0, 0, 0}, {1, 1, 1}, 1);
  const formats::Facet gone = mesh.facets[7];
  mesh.facets.erase(mesh.facets.begin() + 7);
  for (formats::Facet& facet : mesh.facets) {
    int shared = 0;
    for (const std::int32_t v : facet.vertices) {
      for (const std::int32_t w : gone.vertices) shared += v == w ? 1 : 0;
    }
    facet.colour = shared == 2 ? 200 : 1;
  }
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  ASSERT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_EQ(run.mesh.facets.back().colour, 200);
}

TEST(HealHoles, HoleRoundABendIsClosed) {
  formats::Mesh mesh = Torus(40, 24);
  mesh.facets.erase(mesh.facets.begin() + 100, mesh.facets.begin() + 130);
  const HealResult run = RunHeal(mesh, 1e-3);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 40U * 24 * 2);
  EXPECT_NEAR(Volume(run.mesh), Volume(Torus(40, 24)), 0.02 * Volume(run.mesh));
}

TEST(HealHoles, HoleOfAHundredSidesIsClosedFlat) {
  const HealResult run = RunHeal(Cup(100, 10, 2), 1e-3);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 300U + 98);
  EXPECT_NEAR(Volume(run.mesh), 50 * 100 * std::sin(2 * std::numbers::pi / 100) * 2, 1e-9);
}

TEST(HealHoles, HoleOfAThousandSidesIsClosedFlat) {
  const HealResult run = RunHeal(Cup(1000, 10, 2), 1e-3);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 3000U + 998);
  EXPECT_NEAR(Volume(run.mesh), 500 * 100 * std::sin(2 * std::numbers::pi / 1000) * 2, 1e-9);
}

TEST(HealHoles, HolesThatMeetInAVertexAreFilledEachForItself) {
  formats::Mesh mesh = Torus(20, 12);
  // Two cells that have one corner in common.
  std::erase_if(mesh.facets, [&, f = -1](const formats::Facet&) mutable {
    ++f;
    return f == 2 * (3 * 12 + 4) || f == 2 * (3 * 12 + 4) + 1 || f == 2 * (4 * 12 + 5) ||
           f == 2 * (4 * 12 + 5) + 1;
  });
  ASSERT_EQ(mesh.facets.size(), 476U);
  const HealResult run = RunHeal(mesh, 1e-3);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 480U);
  EXPECT_EQ(run.mesh.vertices.size(), 240U);
  EXPECT_EQ(Components(run.mesh), 1U);
}

TEST(HealHoles, FlatSheetStaysOpenAndIsReported) {
  formats::Mesh sheet;
  sheet.vertices = {{{0, 0, 0}}, {{1, 0, 0}}, {{1, 1, 0}}, {{0, 1, 0}}};
  sheet.facets = {{{0, 1, 2}, 4}, {{0, 2, 3}, 4}};
  const HealResult run = RunHeal(sheet, 0.01);
  EXPECT_EQ(run.dialog.warnings, (std::vector<std::string>{"4 open edges could not be closed"}));
  EXPECT_TRUE(run.output == run.input);
}

TEST(HealHoles, MoebiusStripIsReported) {
  formats::Mesh strip;
  constexpr int kRound = 12;
  for (int i = 0; i < kRound; ++i) {
    const double u = 2 * std::numbers::pi * i / kRound;
    for (const double v : {-1.0, 1.0}) {
      const double r = 5 + v * std::cos(u / 2);
      strip.vertices.push_back({r * std::cos(u), r * std::sin(u), v * std::sin(u / 2)});
    }
  }
  for (int i = 0; i < kRound; ++i) {
    const bool last = i + 1 == kRound;
    const int a = 2 * i, b = last ? 1 : a + 2, c = last ? 0 : a + 3;
    strip.facets.push_back({{a, b, c}, 1});
    strip.facets.push_back({{a, c, a + 1}, 1});
  }
  const HealResult run = RunHeal(strip, 0.01);
  EXPECT_FALSE(run.dialog.warnings.empty());
  EXPECT_TRUE(run.dialog.errors.empty());
  EXPECT_GE(run.mesh.facets.size(), 24U);
}

}  // namespace
}  // namespace heal_test
