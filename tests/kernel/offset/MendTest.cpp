// What mends an offset's facets, on a cube of side 10 shrunk by 2 whose corner has been cut off.

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>
#include <vector>

#include "kernel/offset/CoverPoints.h"
#include "kernel/offset/FacetFit.h"
#include "kernel/offset/MendFolds.h"

namespace offset_test {
namespace {

using kernel::CutMesh;
using kernel::HalfEdgeMesh;
using kernel::Vec3;

constexpr kernel::OffsetLimits kLimits = {0.01, 1e-9, 4};

// Faces of a convex body, counter-clockwise from outside, by the numbers of their corners.
template <typename Mesh>
Mesh FromFaces(std::vector<Vec3> vertices,
               std::initializer_list<std::vector<std::uint32_t>> faces) {
  Mesh mesh;
  mesh.vertices = std::move(vertices);
  for (const std::vector<std::uint32_t>& face : faces) {
    for (std::size_t i = 1; i + 1 < face.size(); ++i) {
      mesh.facets.push_back({{face[0], face[i], face[i + 1]}, 1});
    }
  }
  return mesh;
}

kernel::StockMesh Cube() {
  return FromFaces<kernel::StockMesh>(
      {{0, 0, 0},
       {10, 0, 0},
       {10, 10, 0},
       {0, 10, 0},
       {0, 0, 10},
       {10, 0, 10},
       {10, 10, 10},
       {0, 10, 10}},
      {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}});
}

// From 2 to 8, with 7, 8 and 9 in place of the corner (8, 8, 8).
CutMesh CutOffCube() {
  return FromFaces<CutMesh>({{2, 2, 2},
                             {8, 2, 2},
                             {8, 8, 2},
                             {2, 8, 2},
                             {2, 2, 8},
                             {8, 2, 8},
                             {2, 8, 8},
                             {7, 8, 8},
                             {8, 7, 8},
                             {8, 8, 7}},
                            {{0, 3, 2, 1},
                             {4, 5, 8, 7, 6},
                             {0, 1, 5, 4},
                             {1, 2, 9, 8, 5},
                             {3, 6, 7, 9, 2},
                             {0, 4, 6, 3},
                             {7, 8, 9}});
}

class OffsetMending : public testing::Test {
 protected:
  const kernel::StockMesh m_cube = Cube();
  const kernel::StockTree m_tree{m_cube, [](double) {}};
  const kernel::OffsetField m_field{m_tree, kernel::OffsetField::Side::kInside, 2, 10};
  const kernel::OffsetMakers m_makers{m_field, m_cube};
  HalfEdgeMesh m_mesh{CutOffCube()};

  std::size_t CountBad() const {
    const kernel::LocalOffset solid(m_makers);
    std::size_t bad = 0;
    for (const HalfEdgeMesh::Index facet : m_mesh.LiveFacets()) {
      bad += FitOf(solid, CornersOf(facet), kLimits).IsBad(kLimits.tolerance) ? 1 : 0;
    }
    return bad;
  }

  double Volume() const {
    double sixfold = 0;
    for (const HalfEdgeMesh::Index facet : m_mesh.LiveFacets()) {
      const kernel::Corners corners = CornersOf(facet);
      sixfold += Dot(corners[0], Cross(corners[1], corners[2]));
    }
    return sixfold / 6;
  }

  kernel::Corners CornersOf(HalfEdgeMesh::Index facet) const {
    return {m_mesh.At(m_mesh.Origin(3 * facet)), m_mesh.At(m_mesh.Origin(3 * facet + 1)),
            m_mesh.At(m_mesh.Origin(3 * facet + 2))};
  }
};

TEST_F(OffsetMending, FacetThatBridgesACornerIsTheOnlyBadOne) {
  ASSERT_TRUE(m_mesh.IsClosed());
  EXPECT_NEAR(Volume(), 216 - 1.0 / 6, 1e-9);
  EXPECT_EQ(CountBad(), 1U);
}

TEST_F(OffsetMending, BridgedCornerIsMeshedAnew) {
  const std::vector<HalfEdgeMesh::Index> changed =
      MendFolds(m_mesh, m_makers, kLimits, m_mesh.LiveFacets(), [] {});
  EXPECT_FALSE(changed.empty());
  EXPECT_TRUE(m_mesh.IsClosed());
  EXPECT_EQ(CountBad(), 0U);
  EXPECT_NEAR(Volume(), 216, 1e-3);
}

TEST_F(OffsetMending, PointThatIsNotCoveredGetsAVertex) {
  const auto last = static_cast<HalfEdgeMesh::Index>(m_mesh.FacetCount() - 1);
  const std::vector<HalfEdgeMesh::Index> changed =
      CoverPoints(m_mesh, m_makers, kLimits, {{{8, 8, 8}, 0.577, last}});
  EXPECT_EQ(changed.size(), 3U);
  EXPECT_TRUE(m_mesh.IsClosed());
  EXPECT_NEAR(Volume(), 216, 1e-9);
  EXPECT_EQ(CountBad(), 0U);
}

TEST_F(OffsetMending, FacetThatFacesBackwardsIsAFold) {
  const kernel::LocalOffset solid(m_makers);
  const kernel::Corners up = {Vec3{3, 3, 8}, Vec3{5, 3, 8}, Vec3{3, 5, 8}};
  const kernel::FacetFit fits = FitOf(solid, up, kLimits);
  EXPECT_EQ(fits.fold, 0);
  EXPECT_NEAR(fits.cost, 0, 1e-12);
  const kernel::FacetFit folds = FitOf(solid, {up[0], up[2], up[1]}, kLimits);
  EXPECT_NEAR(folds.fold, std::sqrt(2.0), 1e-12);
  EXPECT_GT(folds.cost, 3);
}

}  // namespace
}  // namespace offset_test
