#include <cmath>
#include <gtest/gtest.h>

#include "host/measure/DeviationStatistics.h"
#include "host/measure/FacetTree.h"
#include "host/measure/FarthestPoint.h"

namespace {

using host::Point;

formats::Mesh Box(const Point& low, const Point& high) {
  formats::Mesh mesh;
  for (unsigned corner = 0; corner < 8; ++corner) {
    mesh.vertices.push_back({(corner & 1U) != 0 ? high[0] : low[0],
                             (corner & 2U) != 0 ? high[1] : low[1],
                             (corner & 4U) != 0 ? high[2] : low[2]});
  }
  constexpr std::int32_t kQuads[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                         {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
  for (const auto& quad : kQuads) {
    mesh.facets.push_back({{quad[0], quad[1], quad[2]}, 0});
    mesh.facets.push_back({{quad[0], quad[2], quad[3]}, 0});
  }
  return mesh;
}

double Deviation(const host::FacetTree& tree, const Point& p) {
  return tree.SignedDistance(p, tree.NearestTo(p));
}

bool Never() { return false; }

TEST(FacetTree, TellsFacesEdgesAndCornersFromInsideAndOutside) {
  const host::FacetTree tree(Box({0, 0, 0}, {4, 4, 4}));
  EXPECT_DOUBLE_EQ(Deviation(tree, {2, 2, 3}), 1);
  EXPECT_DOUBLE_EQ(Deviation(tree, {2, 2, 7}), -3);
  EXPECT_DOUBLE_EQ(Deviation(tree, {7, 8, 2}), -5);
  EXPECT_DOUBLE_EQ(Deviation(tree, {6, 6, 5}), -3);
  EXPECT_EQ(Deviation(tree, {4, 1, 2}), 0);
}

TEST(FacetTree, FacetsThatAllFaceInwardsChangeNothing) {
  formats::Mesh box = Box({0, 0, 0}, {4, 4, 4});
  for (formats::Facet& facet : box.facets) std::swap(facet.vertices[0], facet.vertices[1]);
  EXPECT_DOUBLE_EQ(Deviation(host::FacetTree(box), {2, 2, 3}), 1);
}

TEST(FacetTree, KeepsTheSignBesideASharpWedge) {
  // A blade whose nearest facet's normal points the wrong way beyond its edge.
  formats::Mesh blade;
  blade.vertices = {{0, 0, 0}, {10, 0, 0}, {0, 1, 5}, {10, 1, 5}, {0, -1, 5}, {10, -1, 5}};
  blade.facets = {{{0, 1, 3}, 0}, {{0, 3, 2}, 0}, {{0, 4, 5}, 0}, {{0, 5, 1}, 0},
                  {{2, 3, 5}, 0}, {{2, 5, 4}, 0}, {{0, 2, 4}, 0}, {{1, 5, 3}, 0}};
  EXPECT_LT(Deviation(host::FacetTree(blade), {5, 0.3, -0.5}), 0);
  EXPECT_GT(Deviation(host::FacetTree(blade), {5, 0, 1}), 0);
}

TEST(FarthestPoint, FindsAPitBetweenTheCornersOfLargeFacets) {
  // Everything of the flat top is on the stock but for a pit of 3 in its middle.
  formats::Mesh part = Box({0, 0, 0}, {100, 100, 10});
  formats::Mesh stock = Box({0, 0, 0}, {100, 100, 10});
  stock.facets.erase(stock.facets.begin() + 2, stock.facets.begin() + 4);
  stock.vertices.push_back({60, 30, 7});
  for (const auto& [from, to] :
       {std::pair(4, 5), std::pair(5, 7), std::pair(7, 6), std::pair(6, 4)}) {
    stock.facets.push_back({{from, to, 8}, 0});
  }
  const host::FacetTree tree(stock);
  const auto found = host::FarthestPoint(part, tree, Never).Search(host::Side::kOutside, {}, {});
  // The nearest of the pit's slopes to the point above its bottom: 3 cos(atan(3/30)).
  EXPECT_NEAR(found.distance, 3 * 30 / std::sqrt(909.0), 0.02);
  EXPECT_GE(found.bound, 3 * 30 / std::sqrt(909.0) - 1e-9);
  EXPECT_EQ(host::FarthestPoint(part, tree, Never).Search(host::Side::kInside, {}, {}).distance, 0);
}

TEST(DeviationStatistics, WeighsByArea) {
  // Of the part's top, 16 of 96, everything is 0.5 below the stock's.
  const host::FacetTree stock(Box({0, 0, 0}, {4, 4, 4.5}));
  const auto statistics = host::MeasureDeviations(Box({0, 0, 0}, {4, 4, 4}), stock, Never);
  EXPECT_NEAR(statistics.area, 96, 1e-9);
  EXPECT_NEAR(statistics.maximum, 0.5, 1e-9);
  EXPECT_EQ(statistics.minimum, 0);
  // Within 0.5 of the top's rim the sides are nearer: the deviations make a frustum over it, of
  // 16 below, 9 above and a height of 0.5.
  EXPECT_NEAR(statistics.mean, 0.5 / 3 * (16 + 12 + 9) / 96, 1e-4);
  EXPECT_EQ(statistics.percentiles[4], 0);
  EXPECT_TRUE(statistics.gouges.empty());
}

}  // namespace
