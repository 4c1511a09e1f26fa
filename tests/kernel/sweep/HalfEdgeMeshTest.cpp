#include <gtest/gtest.h>
#include <map>
#include <utility>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {
namespace {

// Facet 0 lies opposite the origin; each facet has its own colour.
CutMesh Tetrahedron() {
  CutMesh mesh;
  mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  mesh.facets = {{{1, 2, 3}, 10}, {{0, 2, 1}, 11}, {{0, 1, 3}, 12}, {{0, 3, 2}, 13}};
  return mesh;
}

// Each edge in exactly two facets, once in each direction.
void ExpectClosed(const CutMesh& mesh) {
  std::map<std::pair<std::uint32_t, std::uint32_t>, int> runs;
  for (const CutMesh::Facet& facet : mesh.facets) {
    for (std::size_t i = 0; i < 3; ++i) {
      ++runs[{facet.vertices[i], facet.vertices[(i + 1) % 3]}];
    }
  }
  for (const auto& [edge, count] : runs) {
    EXPECT_EQ(count, 1);
    EXPECT_EQ(runs.count({edge.second, edge.first}), 1U);
  }
}

std::map<int, int> FacetsByColour(const CutMesh& mesh) {
  std::map<int, int> count;
  for (const CutMesh::Facet& facet : mesh.facets) ++count[facet.colour];
  return count;
}

// The twins of all half edges agree with the facets, also after further changes.
void ExpectLinked(const HalfEdgeMesh& mesh) {
  for (HalfEdgeMesh::Index half = 0; half < 3 * mesh.FacetCount(); ++half) {
    EXPECT_EQ(mesh.Twin(mesh.Twin(half)), half);
    EXPECT_EQ(mesh.Origin(mesh.Twin(half)), mesh.Target(half));
  }
  for (HalfEdgeMesh::Index vertex = 0; vertex < mesh.VertexCount(); ++vertex) {
    EXPECT_EQ(mesh.Origin(mesh.Out(vertex)), vertex);
  }
}

TEST(HalfEdgeMesh, SplitEdgeHalvesTheTwoFacetsAtIt) {
  HalfEdgeMesh mesh(Tetrahedron());
  mesh.SplitEdge(0, {0.5, 0.5, 0.1});  // between vertices 1 and 2
  ExpectLinked(mesh);
  const CutMesh split = mesh.Release();
  ExpectClosed(split);
  ASSERT_EQ(split.vertices.size(), 5U);
  EXPECT_EQ(split.vertices[4], (Vec3{0.5, 0.5, 0.1}));
  EXPECT_EQ(FacetsByColour(split), (std::map<int, int>{{10, 2}, {11, 2}, {12, 1}, {13, 1}}));
  // The halves at the edge's origin keep the facets' numbers.
  EXPECT_EQ(split.facets[0].vertices, (std::array<std::uint32_t, 3>{1, 4, 3}));
  EXPECT_EQ(split.facets[1].vertices, (std::array<std::uint32_t, 3>{4, 1, 0}));
}

TEST(HalfEdgeMesh, SplitFacetMakesThreeOfIt) {
  HalfEdgeMesh mesh(Tetrahedron());
  mesh.SplitFacet(2, {0.3, 0, 0.3});
  ExpectLinked(mesh);
  const CutMesh split = mesh.Release();
  ExpectClosed(split);
  ASSERT_EQ(split.facets.size(), 6U);
  EXPECT_EQ(FacetsByColour(split), (std::map<int, int>{{10, 1}, {11, 1}, {12, 3}, {13, 1}}));
  EXPECT_EQ(split.facets[2].vertices, (std::array<std::uint32_t, 3>{0, 1, 4}));
}

TEST(HalfEdgeMesh, SplitsOfSplitsStayClosed) {
  HalfEdgeMesh mesh(Tetrahedron());
  for (HalfEdgeMesh::Index i = 0; i < 12; ++i) {
    mesh.SplitEdge(2 * i, {0.1 * i, 0.2, 0.3});
    mesh.SplitFacet(i, {0.4, 0.1 * i, 0.2});
  }
  ExpectLinked(mesh);
  ExpectClosed(mesh.Release());
}

TEST(HalfEdgeMesh, SplitEdgeCanCollapseAgain) {
  HalfEdgeMesh mesh(Tetrahedron());
  mesh.SplitFacet(0, {0.4, 0.4, 0.4});
  const HalfEdgeMesh::Index out = mesh.Out(4);
  ASSERT_EQ(mesh.Origin(out), 4U);
  mesh.SplitEdge(out, {0.2, 0.2, 0.2});
  mesh.Collapse(mesh.Out(5));
  const CutMesh back = mesh.Release();
  EXPECT_EQ(back.facets.size(), 6U);
  ExpectClosed(back);
}

}  // namespace
}  // namespace kernel
