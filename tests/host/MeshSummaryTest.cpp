#include <gtest/gtest.h>

#include "host/qzhost/MeshSummary.h"

namespace {

// The corner of a cube with edges of 2: a tetrahedron of volume 8 / 6.
formats::Mesh Tetrahedron() {
  formats::Mesh mesh;
  mesh.vertices = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  mesh.facets = {{{0, 2, 1}, 1}, {{0, 1, 3}, 1}, {{0, 3, 2}, 1}, {{1, 2, 3}, 1}};
  return mesh;
}

TEST(MeshSummary, CountsAndMeasures) {
  const host::MeshSummary summary = host::Summarise(Tetrahedron());
  EXPECT_EQ(summary.facets, 4U);
  EXPECT_EQ(summary.vertices, 4U);
  EXPECT_NEAR(summary.volume, 8.0 / 6.0, 1e-12);
}

TEST(MeshSummary, EmptyMeshHasNoVolume) {
  const host::MeshSummary summary = host::Summarise(formats::Mesh());
  EXPECT_EQ(summary.facets, 0U);
  EXPECT_EQ(summary.volume, 0.0);
}

TEST(MeshSummary, ReportNamesEveryFigureWithItsSuffixAndTheUnit) {
  host::Options options;
  options.units = host::Units::kInches;
  host::Report report(options);
  host::AddSummary(report, "in", {4, 5, 1.25}, options);
  EXPECT_EQ(report.Object()["facets_in"], 4);
  EXPECT_EQ(report.Object()["vertices_in"], 5);
  EXPECT_EQ(report.Object()["volume_in"], 1.25);
  EXPECT_NE(report.Text().find("1.250 inch^3"), std::string::npos);
}

}  // namespace
