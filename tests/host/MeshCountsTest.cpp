#include <gtest/gtest.h>

#include "host/qzhost/MeshCounts.h"

namespace {

using host::Counting;
using host::CountMesh;
using host::MeshCounts;

// The corner of a cube with edges of 2: a tetrahedron of volume 8 / 6.
formats::Mesh Tetrahedron() {
  formats::Mesh mesh;
  mesh.vertices = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  mesh.facets = {{{0, 2, 1}, 1}, {{0, 1, 3}, 1}, {{0, 3, 2}, 1}, {{1, 2, 3}, 1}};
  return mesh;
}

// The same with vertices of its own for every facet.
formats::Mesh LooseTetrahedron() {
  formats::Mesh loose;
  for (const formats::Facet& facet : Tetrahedron().facets) {
    const auto first = static_cast<std::int32_t>(loose.vertices.size());
    for (const std::int32_t v : facet.vertices) {
      loose.vertices.push_back(Tetrahedron().vertices[static_cast<size_t>(v)]);
    }
    loose.facets.push_back({{first, first + 1, first + 2}, 1});
  }
  return loose;
}

// Two solids that touch along an edge and have vertices of their own there.
formats::Mesh TouchingTetrahedra() {
  formats::Mesh mesh = Tetrahedron();
  mesh.vertices.insert(mesh.vertices.end(), {{0, 0, 0}, {2, 0, 0}, {0, -2, 0}, {0, 0, -2}});
  for (formats::Facet facet : Tetrahedron().facets) {
    for (std::int32_t& v : facet.vertices) v += 4;
    mesh.facets.push_back(facet);
  }
  return mesh;
}

TEST(MeshCounts, LooseFacetsAreCountedByPlace) {
  const formats::Mesh mesh = LooseTetrahedron();
  ASSERT_EQ(host::CountingFor(mesh), Counting::kByPlace);
  const MeshCounts counts = CountMesh(mesh, Counting::kByPlace);
  EXPECT_EQ(counts.vertices, 12U);
  EXPECT_EQ(counts.topology.openEdges, 0U);
  EXPECT_EQ(counts.topology.components, 1U);
  ASSERT_TRUE(counts.volume.has_value());
  EXPECT_NEAR(*counts.volume, 8.0 / 6.0, 1e-12);
  EXPECT_EQ(CountMesh(mesh, Counting::kByNumber).topology.openEdges, 12U);
}

TEST(MeshCounts, BodiesThatTouchAreCountedByNumber) {
  const formats::Mesh mesh = TouchingTetrahedra();
  ASSERT_EQ(host::CountingFor(mesh), Counting::kByNumber);
  EXPECT_TRUE(CountMesh(mesh, Counting::kByNumber).IsSound());
  EXPECT_EQ(CountMesh(mesh, Counting::kByPlace).topology.nonManifoldEdges, 1U);
}

TEST(MeshCounts, OpenSurfaceHasNoVolume) {
  formats::Mesh mesh = Tetrahedron();
  mesh.facets.pop_back();
  const MeshCounts counts = CountMesh(mesh, Counting::kByNumber);
  EXPECT_FALSE(counts.volume.has_value());
  EXPECT_FALSE(counts.IsSound());
  EXPECT_EQ(host::FaultsText(counts), "3 open edges, 1 holes");
}

TEST(MeshCounts, FacetOfNoAreaIsAFaultOfAClosedSurfaceToo) {
  formats::Mesh mesh = Tetrahedron();
  mesh.facets.push_back({{0, 0, 1}, 1});
  const MeshCounts counts = CountMesh(mesh, Counting::kByNumber);
  EXPECT_FALSE(counts.IsSound());
  EXPECT_EQ(host::FaultsText(counts), "1 zero-area facets");
  EXPECT_EQ(host::FaultsText(CountMesh(Tetrahedron(), Counting::kByNumber)), "");
}

TEST(MeshCounts, ReportSetsBeforeAgainstAfter) {
  formats::Mesh open = Tetrahedron();
  open.facets.pop_back();
  host::Options options;
  options.units = host::Units::kInches;
  host::Report report(options);
  host::AddCounts(report, CountMesh(open, Counting::kByNumber),
                  CountMesh(Tetrahedron(), Counting::kByNumber), options);
  EXPECT_EQ(report.Object()["open_edges_in"], 3);
  EXPECT_EQ(report.Object()["open_edges_out"], 0);
  EXPECT_EQ(report.Object()["holes_filled"], 1);
  EXPECT_TRUE(report.Object()["volume_in"].is_null());
  EXPECT_NE(report.Text().find("3 -> 0\n"), std::string::npos);
  EXPECT_NE(report.Text().find("none -> 1.333 inch^3\n"), std::string::npos);
}

TEST(MeshCounts, ReportWithoutAResultHasTheCountsBeforeOnly) {
  const host::Options options;
  host::Report report(options);
  host::AddCounts(report, CountMesh(Tetrahedron(), Counting::kByNumber), std::nullopt, options);
  EXPECT_EQ(report.Object()["facets_in"], 4);
  EXPECT_FALSE(report.Object().contains("facets_out"));
  EXPECT_FALSE(report.Object().contains("holes_filled"));
  EXPECT_EQ(report.Text().find("->"), std::string::npos);
}

TEST(MeshCounts, HolesThatAHealedSurfaceGainsAreNotFilledOnes) {
  formats::Mesh open = Tetrahedron();
  open.facets.pop_back();
  const host::Options options;
  host::Report report(options);
  host::AddCounts(report, CountMesh(Tetrahedron(), Counting::kByNumber),
                  CountMesh(open, Counting::kByNumber), options);
  EXPECT_EQ(report.Object()["holes_filled"], 0);
}

}  // namespace
