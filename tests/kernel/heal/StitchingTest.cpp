// Cracks, facets that are one too many, slivers: what is mended without a new facet.

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "HealRun.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

using support::Box;
using support::Volume;

// The unit cube, colour 7. Vertex 4 x + 2 y + z is expected nowhere: facets are looked up by place.
formats::Mesh Cube() { return Box({0, 0, 0}, {1, 1, 1}, 7); }

bool IsOnTop(const formats::Mesh& mesh, const formats::Facet& facet) {
  for (const std::int32_t vertex : facet.vertices) {
    if (mesh.vertices[static_cast<std::size_t>(vertex)][2] != 1) return false;
  }
  return true;
}

// The cube with its top a lid of its own, `gap` above it.
formats::Mesh CubeWithLid(double gap) {
  formats::Mesh cube = Cube(), lid;
  lid.vertices = cube.vertices;
  for (auto& vertex : lid.vertices) vertex[2] += gap;
  for (const formats::Facet& facet : cube.facets) {
    if (IsOnTop(cube, facet)) lid.facets.push_back(facet);
  }
  std::erase_if(cube.facets, [&](const formats::Facet& f) { return IsOnTop(cube, f); });
  Add(cube, lid);
  return cube;
}

TEST(HealStitching, VerticesAtOnePlaceAreOneVertex) {
  const HealResult run = RunHeal(Soup(Cube()), 0);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 8U);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 1);
  EXPECT_EQ(CountColour(run.mesh, 7), 12U);
}

TEST(HealStitching, CrackNarrowerThanTheToleranceIsJoined) {
  const HealResult run = RunHeal(CubeWithLid(0.009), 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 8U);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_NEAR(Volume(run.mesh), 1, 0.009);
}

TEST(HealStitching, CrackAsWideAsTheToleranceIsNotJoined) {
  const HealResult run = RunHeal(CubeWithLid(0.0625), 0.0625);
  EXPECT_EQ(run.dialog.warnings, (std::vector<std::string>{"4 open edges could not be closed"}));
  EXPECT_EQ(run.mesh.vertices.size(), 12U);
  // The cube has got a top of its own; the lid is an open sheet still.
  EXPECT_EQ(run.mesh.facets.size(), 14U);
}

TEST(HealStitching, CracksBetweenManyVerticesCloserThanTheToleranceKeepEveryFacet) {
  // Cells of the torus are 0.4 wide at the least: wider than the crack, narrower than the
  // tolerance.
  const formats::Mesh whole = Torus(100, 60);
  formats::Mesh half = whole, other = whole;
  half.facets.clear();
  other.facets.clear();
  for (std::size_t f = 0; f < whole.facets.size(); ++f) {
    (f < whole.facets.size() / 2 ? half : other).facets.push_back(whole.facets[f]);
  }
  for (auto& vertex : other.vertices) vertex[2] += 0.05;
  Add(half, other);
  const HealResult run = RunHeal(half, 0.5);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), whole.vertices.size());
  EXPECT_EQ(run.mesh.facets.size(), whole.facets.size());
}

TEST(HealStitching, FacetsWithCornersJitteredApartAreJoinedWithoutLossOrGain) {
  const formats::Mesh whole = Torus(120, 80);
  formats::Mesh mesh = whole;
  std::mt19937 random(5);
  const auto offset = [&] { return (static_cast<double>(random()) * 0x1p-32 - 0.5) * 1e-5; };
  for (formats::Facet& facet : mesh.facets) {
    if (random() % 10 != 0) continue;
    for (std::int32_t& vertex : facet.vertices) {
      const auto place = mesh.vertices[static_cast<std::size_t>(vertex)];
      vertex = static_cast<std::int32_t>(mesh.vertices.size());
      mesh.vertices.push_back({place[0] + offset(), place[1] + offset(), place[2] + offset()});
    }
  }
  const HealResult run = RunHeal(mesh, 1e-4);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), whole.vertices.size());
  ASSERT_EQ(run.mesh.facets.size(), whole.facets.size());
  for (std::size_t f = 0; f < whole.facets.size(); ++f) {
    for (std::size_t i = 0; i < 3; ++i) {
      const auto& was = whole.vertices[static_cast<std::size_t>(whole.facets[f].vertices[i])];
      const auto& is = run.mesh.vertices[static_cast<std::size_t>(run.mesh.facets[f].vertices[i])];
      ASSERT_LT(support::Length(support::Minus(was, is)), 1e-4);
    }
  }
}

// The cube with the edge from (0,0,1) to (0,1,1) cut at `middle` in one of its two facets only.
formats::Mesh CubeWithPassedVertex(const support::Point& middle, bool withSliver) {
  formats::Mesh cube = Cube();
  const auto find = [&](const support::Point& place) {
    for (std::size_t v = 0; v < cube.vertices.size(); ++v) {
      if (cube.vertices[v] == place) return static_cast<std::int32_t>(v);
    }
    return -1;
  };
  const std::int32_t a = find({0, 0, 1}), b = find({0, 1, 1});
  cube.vertices.push_back(middle);
  const auto m = static_cast<std::int32_t>(cube.vertices.size()) - 1;
  for (formats::Facet& facet : cube.facets) {
    for (std::size_t i = 0; i < 3; ++i) {
      if (facet.vertices[i] != a || facet.vertices[(i + 1) % 3] != b) continue;
      const std::int32_t apex = facet.vertices[(i + 2) % 3];
      facet.vertices = {a, m, apex};
      cube.facets.push_back({{m, b, apex}, 7});
      // Runs back along the whole edge and forward through the vertex.
      if (withSliver) cube.facets.push_back({{a, b, m}, 7});
      return cube;
    }
  }
  ADD_FAILURE() << "the cube has no facet along that edge";
  return cube;
}

TEST(HealStitching, SideThatPassesAVertexIsSplitThere) {
  const HealResult run = RunHeal(CubeWithPassedVertex({0, 0.25, 1}, false), 1e-6);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 9U);
  EXPECT_EQ(run.mesh.facets.size(), 14U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 1);
}

TEST(HealStitching, SideThatPassesAVertexWithinTheToleranceIsSplitThere) {
  const HealResult run = RunHeal(CubeWithPassedVertex({-0.001, 0.5, 1}, false), 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 9U);
  EXPECT_EQ(run.mesh.facets.size(), 14U);
  // The two facets at the new vertex reach 0.001 further out: two pyramids over the cube's faces.
  EXPECT_NEAR(Volume(run.mesh), 1, 0.001);
}

TEST(HealStitching, FacetWithoutAreaGoesAndItsNeighbourIsSplit) {
  const HealResult run = RunHeal(CubeWithPassedVertex({0, 0.5, 1}, true), 0);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 14U);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 1);
}

TEST(HealStitching, SliverGoesEvenWithALargeTolerance) {
  const HealResult run = RunHeal(CubeWithPassedVertex({-1e-10, 0.5, 1}, true), 0.75);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.vertices.size(), 9U);
  EXPECT_EQ(run.mesh.facets.size(), 14U);
  EXPECT_NEAR(Volume(run.mesh), 1, 1e-9);
}

TEST(HealStitching, SliverIsWhatIsLowerThanABillionthOfTheDiagonal) {
  // The cube's diagonal is the root of 3, the vertex nearly in the middle of an edge of length 1.
  const HealResult below = RunHeal(CubeWithPassedVertex({-1.7e-9, 0.5, 1}, true), 1e-6);
  ExpectMended(below);
  EXPECT_EQ(below.mesh.facets.size(), 14U);
  ExpectUnchanged(RunHeal(CubeWithPassedVertex({-1.8e-9, 0.5, 1}, true), 1e-6));
}

TEST(HealStitching, FacetThatNamesAVertexTwiceGoes) {
  formats::Mesh mesh = Cube();
  mesh.facets.insert(mesh.facets.begin() + 4, {{3, 3, 5}, 7});
  const HealResult run = RunHeal(mesh, 0);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
}

TEST(HealStitching, OfRepeatedFacetsTheFirstStays) {
  formats::Mesh mesh = Cube();
  formats::Facet again = mesh.facets[5];
  again.vertices = {again.vertices[1], again.vertices[2], again.vertices[0]};
  again.colour = 9;
  mesh.facets.push_back(again);
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
  EXPECT_EQ(CountColour(run.mesh, 9), 0U);
}

TEST(HealStitching, RepeatedFacetThatFacesTheOtherWayGoes) {
  formats::Mesh mesh = Cube();
  formats::Facet back = mesh.facets[5];
  std::swap(back.vertices[0], back.vertices[1]);
  mesh.facets.push_back(back);
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_EQ(run.mesh.facets.size(), 12U);
}

TEST(HealStitching, TurnedFacetsAreTurnedBack) {
  const formats::Mesh whole = Torus(20, 12);
  formats::Mesh mesh = whole;
  for (std::size_t f = 0; f < mesh.facets.size(); f += 3) {
    std::swap(mesh.facets[f].vertices[1], mesh.facets[f].vertices[2]);
  }
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  ASSERT_EQ(run.mesh.facets.size(), whole.facets.size());
  for (std::size_t f = 0; f < whole.facets.size(); ++f) {
    EXPECT_EQ(run.mesh.facets[f].vertices, whole.facets[f].vertices) << f;
  }
}

TEST(HealStitching, BodyThatFacesInwardsIsTurnedWithAWarning) {
  formats::Mesh mesh = Reversed(Cube());
  Add(mesh, Box({3, 0, 0}, {4, 1, 1}, 2));
  const HealResult run = RunHeal(mesh, 0.01);
  EXPECT_EQ(run.dialog.warnings,
            (std::vector<std::string>{"1 bodies faced inwards and have been turned"}));
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 2);
}

TEST(HealStitching, CavityWithATurnedFacetStaysACavity) {
  formats::Mesh mesh = Box({0, 0, 0}, {9, 9, 9}, 1);
  Add(mesh, Reversed(Box({3, 3, 3}, {5, 5, 5}, 2)));
  std::swap(mesh.facets[17].vertices[1], mesh.facets[17].vertices[2]);
  const HealResult run = RunHeal(mesh, 0.01);
  ExpectMended(run);
  EXPECT_DOUBLE_EQ(Volume(run.mesh), 729 - 8);
}

}  // namespace
}  // namespace heal_test
