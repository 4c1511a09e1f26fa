// The sweep line: what it finds in its way, and what it makes of edges that have only ends in
// common.

#include <gtest/gtest.h>
#include <initializer_list>

#include "kernel/outline/BoundaryEdges.h"
#include "kernel/outline/SnapEdges.h"
#include "kernel/outline/TraceLoops.h"
#include "kernel/outline/UniteEdges.h"

namespace kernel {
namespace {

using Loops = std::initializer_list<Loop>;

std::vector<PlaneEdge> EdgesOf(const Loops& loops) {
  std::vector<PlaneEdge> edges;
  for (const Loop& loop : loops) {
    for (std::size_t i = 0; i < loop.size(); ++i) {
      edges.push_back({loop[i], loop[(i + 1) % loop.size()], {1, 0}});
    }
  }
  JoinEqualEdges(edges, [] {});
  return edges;
}

bool Meet(const Loops& loops) {
  return !BoundaryEdges(EdgesOf(loops), [] {}).has_value();
}

double Area(const std::vector<PlaneEdge>& boundary) {
  double sum = 0;
  for (const Loop& loop : TraceLoops(boundary, [] {})) sum += DoubledArea(loop) / 2;
  return sum;
}

TEST(BoundaryEdges, OfLoopsThatShareACornerOrAnEdgeDoNotMeet) {
  EXPECT_FALSE(Meet({{{0, 0}, {4, 0}, {0, 4}}, {{4, 0}, {8, 0}, {8, 4}}}));
  EXPECT_FALSE(Meet({{{0, 0}, {4, 0}, {0, 4}}, {{4, 0}, {4, 4}, {0, 4}}}));
}

TEST(BoundaryEdges, OfLoopsThatCrossTouchOrOverlapMeet) {
  EXPECT_TRUE(Meet({{{0, 0}, {8, 0}, {8, 8}, {0, 8}}, {{4, 4}, {12, 4}, {12, 12}, {4, 12}}}));
  EXPECT_TRUE(Meet({{{0, 0}, {8, 0}, {4, 4}}, {{4, 4}, {9, 1}, {9, 9}}, {{2, 4}, {6, 4}, {4, 9}}}));
  // A corner inside an edge that begins earlier, and one that ends there.
  EXPECT_TRUE(Meet({{{0, 0}, {8, 4}, {0, 8}}, {{4, 2}, {9, 0}, {9, 1}}}));
  EXPECT_TRUE(Meet({{{0, 8}, {8, 0}, {8, 8}}, {{0, 2}, {1, 0}, {4, 4}}}));
  // One edge along a part of another, from its start, to its end and in between.
  EXPECT_TRUE(Meet({{{0, 0}, {9, 3}, {0, 9}}, {{0, 0}, {9, -9}, {3, 1}}}));
  EXPECT_TRUE(Meet({{{0, 0}, {9, 3}, {0, 9}}, {{6, 2}, {9, -9}, {9, 3}}}));
  EXPECT_TRUE(Meet({{{0, 0}, {9, 3}, {0, 9}}, {{3, 1}, {9, -9}, {6, 2}}}));
  EXPECT_TRUE(Meet({{{0, 0}, {0, 6}, {-6, 3}}, {{0, 2}, {6, 3}, {0, 4}}}));
}

// Two loops whose sides cross at x = 75 and 125. Each time a small loop lies between the sides up
// to shortly before: they are neighbours only once it has been passed.
TEST(BoundaryEdges, ThatBecomeNeighboursWhenWhatIsBetweenThemEndsMeet) {
  const Loop roof = {{0, 0}, {200, 0}, {100, 40}}, valley = {{0, 60}, {100, 20}, {200, 60}};
  const Loop first = {{-5, 30}, {10, 29}, {10, 31}}, second = {{95, 30}, {110, 29}, {110, 31}};
  EXPECT_TRUE(Meet({roof, valley, first, second}));
}

TEST(UniteEdges, LosesWhatIsCoveredTwice) {
  const auto tell = [] {};
  // Squares of 8 by 8 that have 4 by 4 in common.
  const Loops squares = {{{0, 0}, {8, 0}, {8, 8}, {0, 8}}, {{4, 4}, {12, 4}, {12, 12}, {4, 12}}};
  EXPECT_EQ(Area(UniteEdges(EdgesOf(squares), tell)), 112);
  // Three bars of 30 by 10 across each other, 10 apart: in a star of one row and two columns.
  const Loops bars = {{{0, 10}, {30, 10}, {30, 20}, {0, 20}},
                      {{0, 0}, {10, 0}, {10, 30}, {0, 30}},
                      {{20, 0}, {30, 0}, {30, 30}, {20, 30}}};
  EXPECT_EQ(Area(UniteEdges(EdgesOf(bars), tell)), 700);
}

TEST(UniteGroups, OfEachNumberOfGroupsIsTheUnionOfAll) {
  // Squares of side 10, each moved by 4 along x: 10 by 10, and 4 by 10 more for each.
  for (std::size_t count = 0; count < 20; ++count) {
    const auto square = [](std::size_t i) {
      const double x = 4 * static_cast<double>(i);
      return EdgesOf({{{x, 0}, {x + 10, 0}, {x + 10, 10}, {x, 10}}});
    };
    double share = count == 0 ? 1 : 0;
    const auto united = UniteGroups(count, square, [&](double done) {
      EXPECT_GE(done, share);
      share = done;
    });
    EXPECT_EQ(Area(united), count == 0 ? 0 : 60 + 40 * static_cast<double>(count)) << count;
    EXPECT_EQ(share, 1);
  }
}

// The groups may be wound either way: what one covers another does not take away.
TEST(UniteGroups, DoesNotSubtractAGroupThatIsWoundTheOtherWay) {
  const auto group = [](std::size_t i) {
    const std::int32_t way = i == 0 ? 1 : -1;
    std::vector<PlaneEdge> edges = EdgesOf({{{0, 0}, {8, 0}, {8, 8}, {0, 8}}});
    for (PlaneEdge& edge : edges) edge.step = {0, way * edge.step.cover};
    return edges;
  };
  EXPECT_EQ(Area(UniteGroups(2, group, [](double) {})), 64);
}

struct Stop {};

TEST(UniteGroups, StopsWhenTold) {
  const auto group = [](std::size_t) { return EdgesOf({{{0, 0}, {8, 0}, {8, 8}, {0, 8}}}); };
  EXPECT_THROW(UniteGroups(100, group, [](double) { throw Stop(); }), Stop);
}

}  // namespace
}  // namespace kernel
