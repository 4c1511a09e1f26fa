// Vertices of a contour and those of the surface: a cube of side 10 whose top has a vertex in its
// middle, a little raised, shrunk by 2.

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include <vector>

#include "kernel/offset/PlaceOverVertices.h"

namespace offset_test {
namespace {

using kernel::CutMesh;
using kernel::HalfEdgeMesh;
using kernel::Vec3;

constexpr double kRaised = 0.004;
constexpr double kExact = 1e-9;

// The sides of a cube from `low` to `high` but for its top, whose corners are 4 to 7.
template <typename Mesh>
Mesh OpenCube(double low, double high) {
  Mesh mesh;
  for (const double z : {low, high}) {
    for (const auto& [x, y] : {std::pair(low, low), {high, low}, {high, high}, {low, high}}) {
      mesh.vertices.push_back({x, y, z});
    }
  }
  for (std::uint32_t i = 0; i < 4; ++i) {
    const std::uint32_t next = (i + 1) % 4;
    mesh.facets.push_back({{i, next, next + 4}, 1});
    mesh.facets.push_back({{i, next + 4, i + 4}, 1});
  }
  mesh.facets.push_back({{0, 3, 2}, 1});
  mesh.facets.push_back({{0, 2, 1}, 1});
  return mesh;
}

kernel::StockMesh RaisedCube() {
  auto mesh = OpenCube<kernel::StockMesh>(0, 10);
  mesh.vertices.push_back({5, 5, 10 + kRaised});
  for (std::uint32_t i = 0; i < 4; ++i) mesh.facets.push_back({{4 + i, 4 + (i + 1) % 4, 8}, 1});
  return mesh;
}

// With vertices 0.4 and 0.5 beside the middle of its top, and a corner that is off.
CutMesh Contour() {
  auto mesh = OpenCube<CutMesh>(2, 8);
  mesh.vertices[0] = {2.1, 2.1, 2.1};
  mesh.vertices.push_back({4.6, 5, 8});
  mesh.vertices.push_back({5.5, 5, 8});
  for (const std::array<std::uint32_t, 3>& facet : std::vector<std::array<std::uint32_t, 3>>{
           {4, 5, 9}, {4, 9, 8}, {5, 6, 9}, {6, 7, 8}, {6, 8, 9}, {7, 4, 8}}) {
    mesh.facets.push_back({facet, 1});
  }
  return mesh;
}

class OffsetPlaces : public testing::Test {
 protected:
  const kernel::StockMesh m_cube = RaisedCube();
  const kernel::StockTree m_tree{m_cube, [](double) {}};
  const kernel::OffsetField m_field{m_tree, kernel::OffsetField::Side::kInside, 2, 10};
  const kernel::OffsetMakers m_makers{m_field, m_cube};
  HalfEdgeMesh m_mesh{Contour()};

  void Place(double tolerance, double reach) {
    ASSERT_TRUE(m_mesh.IsClosed());
    PlaceOverVertices(m_mesh, m_makers, {tolerance, kExact, reach}, [](double) {});
    for (const HalfEdgeMesh::Index facet : m_mesh.LiveFacets()) {
      for (HalfEdgeMesh::Index half = 3 * facet; half < 3 * facet + 3; ++half) {
        const HalfEdgeMesh::Index twin = m_mesh.Twin(half);
        ASSERT_TRUE(m_mesh.IsLive(twin / 3));
        ASSERT_EQ(m_mesh.Origin(twin), m_mesh.Target(half));
        ASSERT_EQ(m_mesh.Target(twin), m_mesh.Origin(half));
      }
    }
  }

  std::set<HalfEdgeMesh::Index> Vertices() const {
    std::set<HalfEdgeMesh::Index> vertices;
    for (const HalfEdgeMesh::Index facet : m_mesh.LiveFacets()) {
      for (HalfEdgeMesh::Index half = 3 * facet; half < 3 * facet + 3; ++half) {
        vertices.insert(m_mesh.Origin(half));
      }
    }
    return vertices;
  }
};

TEST_F(OffsetPlaces, NearestVertexGoesOverTheSurfacesAndTheOtherBecomesOneWithIt) {
  Place(0.01, 0.75);
  EXPECT_EQ(Vertices(), (std::set<HalfEdgeMesh::Index>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_NEAR(m_mesh.At(8).x, 5, kExact);
  EXPECT_NEAR(m_mesh.At(8).y, 5, kExact);
  // Below the raised vertex by the distance, over the cosine of the slope of 0.004 in 5.
  EXPECT_NEAR(m_mesh.At(8).z, 10 + kRaised - 2 * std::hypot(1, kRaised / 5), kExact);
}

TEST_F(OffsetPlaces, SharpCornerOfTheSurfaceHasNoPlaceOverIt) {
  Place(0.01, 0.75);
  EXPECT_EQ(m_mesh.At(0), (Vec3{2.1, 2.1, 2.1}));
}

TEST_F(OffsetPlaces, VerticesOutOfReachStay) {
  Place(0.01, 0.3);
  EXPECT_EQ(Vertices().size(), 10U);
  EXPECT_EQ(m_mesh.At(8), (Vec3{4.6, 5, 8}));
  EXPECT_EQ(m_mesh.At(9), (Vec3{5.5, 5, 8}));
}

TEST_F(OffsetPlaces, OnlyOneOfTwoInReachMoves) {
  Place(0.01, 0.45);
  EXPECT_EQ(Vertices().size(), 10U);
  EXPECT_NEAR(m_mesh.At(8).x, 5, kExact);
  EXPECT_EQ(m_mesh.At(9), (Vec3{5.5, 5, 8}));
}

}  // namespace
}  // namespace offset_test
