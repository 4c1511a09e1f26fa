#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numbers>
#include <set>
#include <tuple>

#include "formats/ColourTable.h"
#include "formats/MeshMeasures.h"

namespace {

using formats::Mesh;
using testing::DoubleNear;
using testing::ElementsAre;

// A box with outward facets, two a side; colour 1 above and below, 2 around.
void AddBox(Mesh& mesh, std::array<double, 3> low, std::array<double, 3> high) {
  const auto first = static_cast<std::int32_t>(mesh.vertices.size());
  for (int corner = 0; corner < 8; ++corner) {
    mesh.vertices.push_back({(corner & 1) != 0 ? high[0] : low[0],
                             (corner & 2) != 0 ? high[1] : low[1],
                             (corner & 4) != 0 ? high[2] : low[2]});
  }
  const int quads[6][5] = {{0, 2, 3, 1, 1}, {4, 5, 7, 6, 1}, {0, 1, 5, 4, 2},
                           {2, 6, 7, 3, 2}, {0, 4, 6, 2, 2}, {1, 3, 7, 5, 2}};
  for (const auto& q : quads) {
    const auto colour = static_cast<std::uint8_t>(q[4]);
    mesh.facets.push_back({{first + q[0], first + q[1], first + q[2]}, colour});
    mesh.facets.push_back({{first + q[0], first + q[2], first + q[3]}, colour});
  }
}

Mesh BoxMesh() {
  Mesh mesh;
  AddBox(mesh, {0, 0, 0}, {2, 3, 4});
  return mesh;
}

// A ring of square section: an n x m grid closed both ways.
Mesh Torus(int n, int m) {
  Mesh mesh;
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < m; ++j) {
      const double u = 2 * std::numbers::pi * i / n;
      const double v = 2 * std::numbers::pi * j / m;
      mesh.vertices.push_back(
          {(3 + std::cos(v)) * std::cos(u), (3 + std::cos(v)) * std::sin(u), std::sin(v)});
    }
  }
  const auto at = [n, m](int i, int j) { return (i % n) * m + j % m; };
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < m; ++j) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 0});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 0});
    }
  }
  return mesh;
}

TEST(MeasureMesh, MeasuresABox) {
  const formats::MeshMeasures measures = formats::MeasureMesh(BoxMesh());
  EXPECT_DOUBLE_EQ(measures.volume, 24);
  EXPECT_DOUBLE_EQ(measures.area, 52);
  ASSERT_TRUE(measures.box);
  EXPECT_THAT(measures.box->lower, ElementsAre(0, 0, 0));
  EXPECT_THAT(measures.box->upper, ElementsAre(2, 3, 4));
  EXPECT_EQ(measures.zeroAreaFacets, 0U);
  ASSERT_EQ(measures.colours.size(), 2U);
  EXPECT_EQ(measures.colours.at(1).facets, 4U);
  EXPECT_DOUBLE_EQ(measures.colours.at(1).area, 12);
  EXPECT_EQ(measures.colours.at(2).facets, 8U);
  EXPECT_DOUBLE_EQ(measures.colours.at(2).area, 40);
}

TEST(MeasureMesh, KeepsTheVolumeFarFromTheOrigin) {
  Mesh mesh;
  AddBox(mesh, {1e9, -1e9, 1e9}, {1e9 + 2, -1e9 + 3, 1e9 + 4});
  EXPECT_THAT(formats::MeasureMesh(mesh).volume, DoubleNear(24, 1e-12));
}

TEST(MeasureMesh, GivesInwardFacetsANegativeVolume) {
  Mesh mesh = BoxMesh();
  for (formats::Facet& facet : mesh.facets) std::swap(facet.vertices[0], facet.vertices[1]);
  EXPECT_DOUBLE_EQ(formats::MeasureMesh(mesh).volume, -24);
}

TEST(MeasureMesh, CountsZeroAreaFacetsAndNonFiniteVertices) {
  Mesh mesh{{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}, 0}, {{0, 1, 3}, 0}}};
  mesh.vertices.push_back({std::numeric_limits<double>::quiet_NaN(), 0, 0});
  mesh.vertices.push_back({0, std::numeric_limits<double>::infinity(), 0});
  mesh.facets.push_back({{0, 1, 4}, 0});
  const formats::MeshMeasures measures = formats::MeasureMesh(mesh);
  EXPECT_EQ(measures.zeroAreaFacets, 1U);
  EXPECT_EQ(measures.nonFiniteVertices, 2U);
  EXPECT_DOUBLE_EQ(measures.area, 0.5);
  EXPECT_THAT(measures.box->upper, ElementsAre(2, 1, 0));
  EXPECT_EQ(measures.colours.at(0).facets, 3U);
}

TEST(MeasureMesh, HasNoBoxWithoutVertices) {
  const formats::MeshMeasures measures = formats::MeasureMesh({});
  EXPECT_FALSE(measures.box);
  EXPECT_EQ(measures.volume, 0);
  EXPECT_TRUE(measures.colours.empty());
}

TEST(AnalyseTopology, FindsABoxClosedAndWithoutHandles) {
  const formats::MeshTopology topology = formats::AnalyseTopology(BoxMesh());
  EXPECT_EQ(topology.edges, 18U);
  EXPECT_TRUE(topology.IsClosed());
  EXPECT_TRUE(topology.IsOrientedManifold());
  EXPECT_EQ(topology.components, 1U);
  EXPECT_EQ(topology.eulerNumber, 2);
  EXPECT_EQ(topology.Genus(), 0);
  EXPECT_EQ(topology.pinchedVertices, 0U);
}

TEST(AnalyseTopology, FindsTheHandleOfATorus) {
  const formats::MeshTopology topology = formats::AnalyseTopology(Torus(12, 7));
  EXPECT_TRUE(topology.IsOrientedManifold());
  EXPECT_EQ(topology.eulerNumber, 0);
  EXPECT_EQ(topology.Genus(), 1);
}

TEST(AnalyseTopology, CountsTheOpenEdgesOfABoxWithoutLid) {
  Mesh mesh = BoxMesh();
  mesh.facets.erase(mesh.facets.begin() + 2, mesh.facets.begin() + 4);
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.openEdges, 4U);
  EXPECT_FALSE(topology.IsClosed());
  EXPECT_FALSE(topology.Genus());
  EXPECT_EQ(topology.eulerNumber, 1);
  EXPECT_EQ(topology.holes, 1U);
}

TEST(AnalyseTopology, TakesHolesThatShareACornerForOneRunOfEdges) {
  Mesh mesh = BoxMesh();
  // Two of the six facets about corner 0 that are no neighbours. With the corner pulled apart, as
  // the other counts take it, both gaps are one.
  mesh.facets.erase(mesh.facets.begin() + 5);
  mesh.facets.erase(mesh.facets.begin());
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.openEdges, 6U);
  EXPECT_EQ(topology.holes, 1U);
  EXPECT_EQ(topology.pinchedVertices, 1U);
}

TEST(AnalyseTopology, CountsHolesThatShareNothingApart) {
  Mesh mesh = BoxMesh();
  // One facet of the bottom and the one of the top without a corner above it.
  mesh.facets.erase(mesh.facets.begin() + 3);
  mesh.facets.erase(mesh.facets.begin());
  EXPECT_EQ(formats::AnalyseTopology(mesh).holes, 2U);
}

TEST(AnalyseTopology, CountsBothRimsOfATube) {
  Mesh mesh = BoxMesh();
  mesh.facets.erase(mesh.facets.begin(), mesh.facets.begin() + 4);
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.openEdges, 8U);
  EXPECT_EQ(topology.holes, 2U);
}

TEST(AnalyseTopology, CountsTheEdgesOfAFlippedFacet) {
  Mesh mesh = BoxMesh();
  std::swap(mesh.facets[5].vertices[0], mesh.facets[5].vertices[1]);
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.flippedEdges, 3U);
  EXPECT_EQ(topology.flippedFacets, 1U);
  EXPECT_TRUE(topology.IsClosed());
  EXPECT_FALSE(topology.IsOrientedManifold());
  EXPECT_EQ(topology.pinchedVertices, 0U);
}

TEST(AnalyseTopology, CountsTheFewestFacetsToTurnInEachComponent) {
  Mesh mesh = BoxMesh();
  AddBox(mesh, {10, 0, 0}, {11, 1, 1});
  // All but two of the first box, three of the second.
  for (const std::size_t facet : {0U, 1U, 2U, 4U, 5U, 6U, 8U, 9U, 10U, 11U, 13U, 17U, 22U}) {
    std::swap(mesh.facets[facet].vertices[0], mesh.facets[facet].vertices[1]);
  }
  EXPECT_EQ(formats::AnalyseTopology(mesh).flippedFacets, 5U);
}

TEST(AnalyseTopology, TakesABoxThatFacesInwardsForConsistent) {
  Mesh mesh = BoxMesh();
  for (formats::Facet& facet : mesh.facets) std::swap(facet.vertices[0], facet.vertices[1]);
  EXPECT_EQ(formats::AnalyseTopology(mesh).flippedFacets, 0U);
}

TEST(AnalyseTopology, TurnsPartOfASurfaceOfOneSideAndIsDone) {
  // A Moebius band of five facets, each wound against the next: that cannot come out even.
  const Mesh band{{{0, 0, 0}, {1, 0, 0}, {2, 1, 0}, {1, 2, 1}, {0, 1, 2}},
                  {{{0, 1, 2}, 0}, {{1, 2, 3}, 0}, {{2, 3, 4}, 0}, {{3, 4, 0}, 0}, {{4, 0, 1}, 0}}};
  const formats::MeshTopology topology = formats::AnalyseTopology(band);
  EXPECT_EQ(topology.openEdges, 5U);
  EXPECT_EQ(topology.holes, 1U);
  EXPECT_EQ(topology.flippedFacets, 2U);
}

TEST(AnalyseTopology, CountsTwoBoxesAsTwoComponents) {
  Mesh mesh = BoxMesh();
  AddBox(mesh, {10, 0, 0}, {11, 1, 1});
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.components, 2U);
  EXPECT_EQ(topology.eulerNumber, 4);
  EXPECT_EQ(topology.Genus(), 0);
}

TEST(AnalyseTopology, SeesBoxesThatShareAnEdge) {
  Mesh mesh;
  AddBox(mesh, {0, 0, 0}, {1, 1, 1});
  AddBox(mesh, {1, 1, 0}, {2, 2, 1});
  EXPECT_EQ(formats::AnalyseTopology(mesh).nonManifoldEdges, 0U);
  EXPECT_EQ(formats::JoinCoincidentVertices(mesh), 2U);
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.nonManifoldEdges, 1U);
  EXPECT_EQ(topology.components, 1U);
  EXPECT_TRUE(topology.IsClosed());
  EXPECT_FALSE(topology.IsOrientedManifold());
}

TEST(AnalyseTopology, SeesBoxesThatShareACornerAsTwoComponents) {
  Mesh mesh;
  AddBox(mesh, {0, 0, 0}, {1, 1, 1});
  AddBox(mesh, {1, 1, 1}, {2, 2, 2});
  EXPECT_EQ(formats::JoinCoincidentVertices(mesh), 1U);
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.pinchedVertices, 1U);
  EXPECT_EQ(topology.components, 2U);
  EXPECT_TRUE(topology.IsOrientedManifold());
  EXPECT_EQ(topology.Genus(), 0);
}

TEST(AnalyseTopology, LeavesFacetsThatRepeatAVertexOut) {
  Mesh mesh = BoxMesh();
  mesh.facets.push_back({{0, 0, 1}, 0});
  mesh.vertices.push_back({9, 9, 9});
  const formats::MeshTopology topology = formats::AnalyseTopology(mesh);
  EXPECT_EQ(topology.repeatedVertexFacets, 1U);
  EXPECT_EQ(topology.unusedVertices, 1U);
  EXPECT_EQ(topology.components, 1U);
  EXPECT_TRUE(topology.IsOrientedManifold());
}

TEST(AnalyseTopology, TakesAnEmptyMesh) {
  const formats::MeshTopology topology = formats::AnalyseTopology({});
  EXPECT_EQ(topology.components, 0U);
  EXPECT_EQ(topology.Genus(), 0);
}

TEST(JoinCoincidentVertices, KeepsTheFirstOfEachPlaceInOrder) {
  Mesh mesh{{{1, 0, 0}, {0, 0, 0}, {1, 0, 0}, {-0.0, 0, 0}, {2, 0, 0}}, {{{2, 3, 4}, 5}}};
  EXPECT_EQ(formats::JoinCoincidentVertices(mesh), 2U);
  ASSERT_EQ(mesh.vertices.size(), 3U);
  EXPECT_EQ(mesh.vertices[2][0], 2);
  EXPECT_THAT(mesh.facets[0].vertices, ElementsAre(0, 1, 2));
  EXPECT_EQ(mesh.facets[0].colour, 5);
}

TEST(JoinCoincidentVertices, NeverJoinsNaN) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Mesh mesh;
  mesh.vertices.assign(100000, {nan, 0, 0});
  EXPECT_EQ(formats::JoinCoincidentVertices(mesh), 0U);
  EXPECT_EQ(mesh.vertices.size(), 100000U);
}

TEST(ColourTable, HasADifferentColourForEachNumberAndFindsItBack) {
  std::set<std::tuple<int, int, int>> seen;
  for (int colour = 0; colour < 256; ++colour) {
    const formats::Rgb rgb = formats::RgbOfColour(static_cast<std::uint8_t>(colour));
    EXPECT_TRUE(seen.emplace(rgb.red, rgb.green, rgb.blue).second) << colour;
    EXPECT_EQ(formats::ColourOfRgb(rgb), colour);
  }
}

TEST(ColourTable, TakesTheNearestColourForOneItDoesNotHave) {
  EXPECT_EQ(formats::RgbOfColour(1), (formats::Rgb{230, 60, 50}));
  EXPECT_EQ(formats::ColourOfRgb({229, 61, 52}), 1);
}

}  // namespace
