#include <gtest/gtest.h>
#include <numeric>

#include "kernel/sweep/NearestOnTriangle.h"
#include "kernel/sweep/StockSurface.h"
#include "support/geometry/MeshChecks.h"

namespace kernel {
namespace {

StockMesh MeshOf(const formats::Mesh& given) {
  StockMesh mesh;
  for (const auto& p : given.vertices) mesh.vertices.push_back({p[0], p[1], p[2]});
  for (const formats::Facet& facet : given.facets) {
    const auto& v = facet.vertices;
    mesh.facets.push_back({{static_cast<std::uint32_t>(v[0]), static_cast<std::uint32_t>(v[1]),
                            static_cast<std::uint32_t>(v[2])},
                           facet.colour});
  }
  return mesh;
}

std::vector<std::uint32_t> All(const StockMesh& mesh) {
  std::vector<std::uint32_t> facets(mesh.facets.size());
  std::iota(facets.begin(), facets.end(), 0U);
  return facets;
}

double Distance(const StockSurface& surface, const Vec3& point) {
  return surface.Nearest(point, All(surface.Mesh()))->distance;
}

// Two boxes that share the edge x = 4, z = 3: an L whose inner corner runs along it.
StockMesh LShape() {
  // Outline in x and z, counter-clockwise seen from -y: (0,0) (8,0) (8,3) (4,3) (4,6) (0,6).
  const std::vector<std::array<double, 2>> outline = {{0, 0}, {8, 0}, {8, 3},
                                                      {4, 3}, {4, 6}, {0, 6}};
  StockMesh mesh;
  for (const double y : {0.0, 5.0}) {
    for (const auto& [x, z] : outline) mesh.vertices.push_back({x, y, z});
  }
  const std::vector<std::array<std::uint32_t, 3>> front = {
      {0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 5}};
  for (const auto& [a, b, c] : front) {
    mesh.facets.push_back({{a, b, c}, 1});
    mesh.facets.push_back({{a + 6, c + 6, b + 6}, 1});
  }
  for (std::uint32_t i = 0; i < 6; ++i) {
    const std::uint32_t next = (i + 1) % 6;
    mesh.facets.push_back({{i, i + 6, next + 6}, 1});
    mesh.facets.push_back({{i, next + 6, next}, 1});
  }
  return mesh;
}

TEST(StockSurface, BoxHasItsDistancesInsideAndOutside) {
  const StockMesh box = MeshOf(support::Box({0, 0, 0}, {4, 6, 8}, 1));
  const StockSurface surface(box, false);
  EXPECT_NEAR(Distance(surface, {1, 3, 4}), -1, 1e-14);
  EXPECT_NEAR(Distance(surface, {-2, 3, 4}), 2, 1e-14);
  // Beyond an edge and beyond a corner.
  EXPECT_NEAR(Distance(surface, {7, 10, 4}), 5, 1e-14);
  EXPECT_NEAR(Distance(surface, {-1, -2, 10}), 3, 1e-14);
  // Just inside an edge and a corner, where the nearest facet alone decides nothing.
  EXPECT_NEAR(Distance(surface, {0.01, 0.02, 4}), -0.01, 1e-14);
  EXPECT_NEAR(Distance(surface, {0.03, 0.02, 0.01}), -0.01, 1e-14);
}

TEST(StockSurface, InnerCornerHasTheRightSides) {
  const StockMesh shape = LShape();
  const StockSurface surface(shape, false);
  // Nearest to the inner edge itself, in the stock.
  EXPECT_NEAR(Distance(surface, {3.7, 2.5, 2.6}), -0.5, 1e-14);
  // In the notch, nearest to its wall and to its floor.
  EXPECT_NEAR(Distance(surface, {4.2, 2.5, 4}), 0.2, 1e-14);
  EXPECT_NEAR(Distance(surface, {6, 2.5, 3.1}), 0.1, 1e-14);
}

TEST(StockSurface, OverlappingBodiesHaveNoOutside) {
  const StockMesh box = MeshOf(support::Box({0, 0, 0}, {4, 6, 8}, 1));
  EXPECT_NEAR(Distance(StockSurface(box, true), {-2, 3, 4}), -2, 1e-14);
}

TEST(StockSurface, WithoutFacetsThereIsNoNearestPoint) {
  const StockMesh box = MeshOf(support::Box({0, 0, 0}, {4, 6, 8}, 1));
  EXPECT_FALSE(StockSurface(box, false).Nearest({1, 1, 1}, {}).has_value());
}

TEST(NearestOnTriangle, TellsInsideEdgesAndCorners) {
  using Kind = TrianglePart::Kind;
  const std::array<Vec3, 3> triangle = {Vec3{0, 0, 0}, {4, 0, 0}, {0, 4, 0}};
  const auto expect = [&](const Vec3& from, const Vec3& nearest, Kind kind, int index) {
    const PointOnTriangle found = NearestOnTriangle(triangle, from);
    EXPECT_NEAR(Length(found.point - nearest), 0, 1e-15);
    EXPECT_EQ(found.part.kind, kind);
    if (kind != Kind::kInside) {
      EXPECT_EQ(found.part.index, index);
    }
  };
  expect({1, 1, 5}, {1, 1, 0}, Kind::kInside, 0);
  expect({2, -1, 1}, {2, 0, 0}, Kind::kEdge, 0);
  expect({3, 3, -1}, {2, 2, 0}, Kind::kEdge, 1);
  expect({-1, 3, 0}, {0, 3, 0}, Kind::kEdge, 2);
  expect({-1, -1, 2}, {0, 0, 0}, Kind::kCorner, 0);
  expect({6, -1, 0}, {4, 0, 0}, Kind::kCorner, 1);
  expect({-1, 9, 0}, {0, 4, 0}, Kind::kCorner, 2);
}

}  // namespace
}  // namespace kernel
