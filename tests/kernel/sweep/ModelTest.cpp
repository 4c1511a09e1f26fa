// The parts of the sweep kernel that have answers of their own.

#include <atomic>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>

#include "kernel/common/Workers.h"
#include "kernel/sweep/CellTopology.h"
#include "kernel/sweep/ExactOrientation.h"
#include "kernel/sweep/PrepareStock.h"
#include "kernel/sweep/StockRaster.h"
#include "kernel/sweep/SubtractFromRay.h"

namespace kernel {
namespace {

const Generator kStock = Generator::StockFacet(3);
const Generator kFirst = Generator::Move(1);
const Generator kSecond = Generator::Move(2);

DexelRay Solid(double low, double high) { return {{low, high, kStock, kStock}}; }

TEST(SubtractFromRay, MiddlePartsTheInterval) {
  DexelRay ray = Solid(0, 10);
  EXPECT_TRUE(SubtractFromRay(ray, 3, 4, kFirst, 1e-9));
  ASSERT_EQ(ray.size(), 2U);
  EXPECT_EQ(ray[0].high, 3);
  EXPECT_EQ(ray[0].highMaker, kFirst);
  EXPECT_EQ(ray[0].lowMaker, kStock);
  EXPECT_EQ(ray[1].low, 4);
  EXPECT_EQ(ray[1].lowMaker, kFirst);
  EXPECT_EQ(ray[1].highMaker, kStock);
}

TEST(SubtractFromRay, StretchOverSeveralIntervalsTrimsTheOuterOnes) {
  DexelRay ray = {{0, 2, kStock, kStock}, {3, 4, kStock, kStock}, {5, 7, kStock, kStock}};
  EXPECT_TRUE(SubtractFromRay(ray, 1, 6, kFirst, 1e-9));
  ASSERT_EQ(ray.size(), 2U);
  EXPECT_EQ(ray[0].high, 1);
  EXPECT_EQ(ray[1].low, 6);
}

TEST(SubtractFromRay, TouchingRemovesNothingAndKeepsTheStocksMaker) {
  DexelRay ray = Solid(0, 10);
  EXPECT_FALSE(SubtractFromRay(ray, 10 - 1e-10, 20, kFirst, 1e-9));
  EXPECT_FALSE(SubtractFromRay(ray, -5, 1e-10, kFirst, 1e-9));
  EXPECT_EQ(ray[0].low, 0);
  EXPECT_EQ(ray[0].high, 10);
  EXPECT_EQ(ray[0].highMaker, kStock);
}

TEST(SubtractFromRay, LaterMoveTakesOverACoincidingEnd) {
  DexelRay ray = Solid(0, 10);
  SubtractFromRay(ray, 6, 20, kFirst, 1e-9);
  EXPECT_FALSE(SubtractFromRay(ray, 6, 20, kSecond, 1e-9));
  ASSERT_EQ(ray.size(), 1U);
  EXPECT_EQ(ray[0].high, 6);
  EXPECT_EQ(ray[0].highMaker, kSecond);
}

TEST(ExactOrientation, DecidesWhereDoublesCannot) {
  // c lies on the line through a and b but for one unit in the last place.
  const Point2 a{0.1, 0.1};
  const Point2 b{0.7, 0.7};
  EXPECT_EQ(OrientationSign(a, b, {0.3, 0.3}), 0);
  EXPECT_EQ(OrientationSign(a, b, {0.3, std::nextafter(0.3, 1)}), 1);
  EXPECT_EQ(OrientationSign(a, b, {0.3, std::nextafter(0.3, 0)}), -1);
  EXPECT_EQ(OrientationSign(b, a, {0.3, std::nextafter(0.3, 0)}), 1);
}

TEST(CellTopology, EveryCrossingIsInOneLoopAndLoopsHaveThreeOrMore) {
  for (unsigned signs = 0; signs < 256; ++signs) {
    const CellTopology& topology = TopologyOf(signs);
    std::array<int, 12> members{};
    for (int edge = 0; edge < 12; ++edge) {
      const int low = EdgeCorner(edge);
      const int high = low | (1 << EdgeAxis(edge));
      const bool crosses = ((signs >> low ^ signs >> high) & 1U) != 0;
      const int loop = topology.loopOfEdge[static_cast<std::size_t>(edge)];
      ASSERT_EQ(crosses, loop >= 0);
      if (crosses) ++members[static_cast<std::size_t>(loop)];
    }
    for (int loop = 0; loop < topology.loopCount; ++loop) {
      EXPECT_GE(members[static_cast<std::size_t>(loop)], 3);
    }
  }
}

TEST(CellTopology, TwoOppositeCornersGiveTwoLoopsAndFourCheckeredOnesFour) {
  EXPECT_EQ(TopologyOf(0b10000001).loopCount, 2);
  EXPECT_EQ(TopologyOf(0b01101001).loopCount, 4);
  EXPECT_EQ(TopologyOf(0b00000001).loopCount, 1);
  EXPECT_EQ(TopologyOf(0).loopCount, 0);
}

StockMesh Tetrahedron(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d) {
  StockMesh mesh;
  mesh.vertices = {a, b, c, d};
  mesh.facets = {{{0, 2, 1}, 1}, {{0, 1, 3}, 1}, {{1, 2, 3}, 1}, {{2, 0, 3}, 1}};
  return mesh;
}

TEST(StockRaster, RaysThroughEdgesAndVerticesEnterAsOftenAsTheyLeave) {
  // The nodes of the lattice for this box, taken as the vertices of a solid.
  const Box3 box{{0, 0, 0}, {4, 4, 4}};
  const DexelLattice lattice(box, 0.5);
  const StockMesh mesh = Tetrahedron(lattice.Node(2, 2, 2), lattice.Node(6, 2, 2),
                                     lattice.Node(2, 6, 2), lattice.Node(2, 2, 6));
  DexelModel model(lattice, 1e-12);
  double volume[3] = {0, 0, 0};
  for (int axis = 0; axis < 3; ++axis) {
    RasteriseStock(mesh, axis, model);
    for (const DexelRay& ray : model.Rays(axis)) {
      ASSERT_LE(ray.size(), 1U);
      for (const SolidInterval& solid : ray) volume[axis] += (solid.high - solid.low) * 0.25;
    }
  }
  // Each ray counts as shifted towards +u, +v: of the legs of 4 nodes those at 0 to 3 count, with
  // lengths (4 - i - j) / 2 along the ray, shifted ones 0 beyond the slope.
  for (const double v : volume)
    EXPECT_NEAR(v, 0.25 * 0.5 * (4 + 3 + 3 + 2 + 2 + 2 + 1 + 1 + 1 + 1), 1e-12);
}

TEST(PrepareStock, BodiesThatShareAnEdgeGetVerticesOfTheirOwn) {
  // Two tetrahedra on opposite sides of one edge, by vertex number one mesh.
  StockMesh mesh;
  mesh.vertices = {{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
  const auto add = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    for (const auto& f : {std::array{a, c, b}, {a, b, d}, {b, c, d}, {c, a, d}}) {
      mesh.facets.push_back({f, 1});
    }
  };
  add(0, 2, 3, 1);
  add(0, 4, 5, 1);
  EXPECT_NO_THROW(PrepareStock(mesh));
  const StockMesh parted = WithOwnVertices(mesh);
  EXPECT_EQ(parted.vertices.size(), 8U);
  std::set<std::uint32_t> first, second;
  for (std::size_t f = 0; f < 8; ++f) {
    (f < 4 ? first : second)
        .insert(parted.facets[f].vertices.begin(), parted.facets[f].vertices.end());
  }
  EXPECT_EQ(first.size(), 4U);
  EXPECT_EQ(second.size(), 4U);
  for (const std::uint32_t v : first) EXPECT_FALSE(second.contains(v));
}

TEST(Workers, EachTaskRunsOnceAndAFailureReachesTheCaller) {
  std::vector<std::atomic<int>> runs(500);
  std::size_t last = 0;
  RunTasks(
      runs.size(), [&](std::size_t i) { ++runs[i]; }, [&](std::size_t done) { last = done; });
  for (const auto& count : runs) EXPECT_EQ(count, 1);
  EXPECT_EQ(last, runs.size());
  EXPECT_THROW(RunTasks(
                   100,
                   [](std::size_t i) {
                     if (i == 40) throw std::runtime_error("task");
                   },
                   [](std::size_t) {}),
               std::runtime_error);
}

}  // namespace
}  // namespace kernel
