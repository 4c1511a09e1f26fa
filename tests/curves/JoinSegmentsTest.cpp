// Which curves come of which segments, and in what order.

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "ChannelTest.h"
#include "platform/QZCore.h"
#include "support/FileBuilder.h"

namespace {

using support::CurveFileBytes;

class JoinSegmentsTest : public ChannelTest {
 protected:
  struct Joined {
    int result;
    std::string bytes;
  };

  /// The points two apart, so that every segment is long enough for a curve.
  void Expect(const Segments& segments, int result, const std::vector<Segments>& curves) {
    Expect({Row(25), segments}, result, curves);
  }
  void Expect(const support::Outline& outline, int result, const std::vector<Segments>& curves) {
    for (const int mode : {0, 1}) {
      SCOPED_TRACE("mode " + std::to_string(mode));
      CurveXferQZ channel(mode, Name().c_str());
      EXPECT_EQ(PlayAndClose(&channel, outline), result);
      const auto count = static_cast<std::int32_t>(outline.segments.size());
      EXPECT_EQ(Bytes(), CurveFileBytes({mode, outline.points, count, curves}));
    }
  }
};

support::Outline SquareAtTenth(double side) { return support::Square(side); }

const std::vector<Segments> kSquareCurve = {{{4, 1}, {1, 2}, {2, 3}, {3, 4}}};

TEST_F(JoinSegmentsTest, SegmentThatFitsBothEndsGoesToTheHead) {
  Expect({{1, 2}, {2, 3}, {3, 4}, {4, 1}}, 1, kSquareCurve);
}

TEST_F(JoinSegmentsTest, OpenChainGivesNoCurveAndIsNoFailure) {
  Expect({{1, 2}, {2, 3}, {3, 4}}, 1, {});
}

TEST_F(JoinSegmentsTest, SegmentInFrontGoesToTheHeadOfTheSameList) {
  Expect({{2, 3}, {1, 2}, {3, 1}}, 1, {{{3, 1}, {1, 2}, {2, 3}}});
}

TEST_F(JoinSegmentsTest, SegmentsAreNotTurnedRound) { Expect({{1, 2}, {3, 2}, {3, 1}}, 1, {}); }

TEST_F(JoinSegmentsTest, ListsAreFollowedWhereTheyAreNotOne) {
  // 1-2-3 and 4-5-6 are lists of their own until 3-4 joins the first and 6-1 does.
  Expect({{1, 2}, {4, 5}, {2, 3}, {5, 6}, {3, 4}, {6, 1}}, 1,
         {{{6, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}}});
}

TEST_F(JoinSegmentsTest, OfTwoListsThatTakeASegmentTheFirstGetsItAtItsTail) {
  // 2-3 fits behind 1-2 and in front of 3-4; the first list has it, and is left for the second.
  Expect({{1, 2}, {3, 4}, {2, 3}, {4, 1}}, 1, {{{4, 1}, {1, 2}, {2, 3}, {3, 4}}});
  Expect({{1, 2}, {3, 4}, {2, 3}, {4, 5}, {5, 1}}, 1, {{{5, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}}});
}

TEST_F(JoinSegmentsTest, OfTwoListsThatTakeASegmentTheFirstGetsItAtItsHead) {
  Expect({{3, 4}, {1, 2}, {2, 3}, {4, 1}}, 1, {{{2, 3}, {3, 4}, {4, 1}, {1, 2}}});
}

TEST_F(JoinSegmentsTest, CurvesComeInTheOrderOfTheirLists) {
  Expect({{7, 8}, {1, 2}, {8, 7}, {2, 1}, {4, 5}, {5, 4}}, 1,
         {{{8, 7}, {7, 8}}, {{2, 1}, {1, 2}}, {{5, 4}, {4, 5}}});
}

TEST_F(JoinSegmentsTest, MoreCurvesThanTheTableHoldsAtFirst) {
  support::Outline outline{Row(1000), {}};
  std::vector<Segments> curves;
  for (int i = 1; i < 1000; i += 2) {
    outline.segments.emplace_back(i, i + 1);
    outline.segments.emplace_back(i + 1, i);
    curves.push_back({{i + 1, i}, {i, i + 1}});
  }
  Expect(outline, 1, curves);
}

TEST_F(JoinSegmentsTest, SegmentCountCountsTheDroppedOnesToo) {
  Expect({{1, 2}, {2, 1}, {5, 6}, {9, 9}}, 1, {{{2, 1}, {1, 2}}});
}

TEST_F(JoinSegmentsTest, CurveOfOneSegmentIsDropped) { Expect({{1, 1}}, 1, {}); }

TEST_F(JoinSegmentsTest, EqualSegmentsEndAtOnceWithoutACurve) {
  Expect({{1, 2}, {1, 2}}, 1, {});
  Expect({{1, 2}, {1, 3}}, 1, {});
  Expect({{1, 2}, {1, 2}, {1, 2}, {1, 3}}, 1, {});
}

TEST_F(JoinSegmentsTest, ListBehindAnotherOfTheSameStartRepeatsItsCurve) {
  // The lists 3-6-7-1 and 1-3 make a curve. 1-5 starts where 1-3 does, and the index has that one.
  Expect({{6, 7}, {1, 5}, {1, 3}, {3, 6}, {7, 1}}, 1,
         {{{3, 6}, {6, 7}, {7, 1}, {1, 3}}, {{1, 3}, {3, 6}, {6, 7}, {7, 1}}});
}

TEST_F(JoinSegmentsTest, OpenChainsThatRunIntoOneAnotherAreAllDropped) {
  // 1-11-20 and 2-12-20 both lead to the list 20-21-22.
  Expect({{1, 11}, {2, 12}, {20, 21}, {21, 22}, {11, 20}, {12, 20}}, 1, {});
}

TEST_F(JoinSegmentsTest, ChainThatRunsIntoACircleFailsTheWholeJoining) {
  // 8-9-1 leads to the circle 1-3-6-7-1, which never comes back to 8.
  const Segments circleWithATail = {{8, 9}, {6, 7}, {1, 3}, {3, 6}, {7, 1}, {9, 1}};
  Expect(circleWithATail, 0, {});
  // A curve found before is lost with it.
  Segments behindACurve = {{10, 11}, {11, 10}};
  behindACurve.insert(behindACurve.end(), circleWithATail.begin(), circleWithATail.end());
  Expect(behindACurve, 0, {});
}

TEST_F(JoinSegmentsTest, CurveMayHaveAllSegments) {
  Expect({{2, 1}, {1, 2}}, 1, {{{1, 2}, {2, 1}}});
}

// (10 x 0.1) squared is 1.
TEST_F(JoinSegmentsTest, SumOfSquaresMustBeAboveTheThreshold) {
  Expect(SquareAtTenth(0.5), 1, {});
  Expect(SquareAtTenth(std::nextafter(0.5, 1)), 1, kSquareCurve);
}

TEST_F(JoinSegmentsTest, SquaresAreAddedNotLengths) {
  // Lengths of 1.96 in all, squares of 0.9604.
  Expect(SquareAtTenth(0.49), 1, {});
}

TEST_F(JoinSegmentsTest, LengthCountsInAllThreeDirections) {
  for (int axis = 0; axis < 3; ++axis) {
    Points points = {{5, 5, 5}, {5, 5, 5}};
    points[1][static_cast<std::size_t>(axis)] -= 0.75;
    Expect({points, {{1, 2}, {2, 1}}}, 1, {{{2, 1}, {1, 2}}});
    points[1][static_cast<std::size_t>(axis)] += 0.25;
    Expect({points, {{1, 2}, {2, 1}}}, 1, {});
  }
}

TEST_F(JoinSegmentsTest, SmallSegmentsAddUp) {
  support::Outline outline;
  for (int i = 0; i < 100; ++i) {
    outline.points.push_back({0.2 * std::cos(0.06 * i), 0.2 * std::sin(0.06 * i), 0.11 * (i % 2)});
    if (i > 0) outline.segments.emplace_back(i, i + 1);
  }
  outline.segments.emplace_back(100, 1);
  Segments curve{{100, 1}};
  curve.insert(curve.end(), outline.segments.begin(), outline.segments.end() - 1);
  Expect(outline, 1, {curve});
}

TEST_F(JoinSegmentsTest, ToleranceIsThatOfTheConstruction) {
  CurveXferQZ channel(0, Name().c_str());
  tol = 1000;
  const support::Outline square = SquareAtTenth(0.75);
  EXPECT_EQ(PlayAndClose(&channel, square), 1);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, square.points, 4, kSquareCurve}));
}

TEST_F(JoinSegmentsTest, ToleranceOfZeroDropsOnlyCurvesWithoutLength) {
  tol = 0;
  Expect({{{1, 1, 1}, {1, 1, 1}}, {{1, 2}, {2, 1}}}, 1, {});
  Expect({{{1, 1, 1}, {1, 1, 1.0001}}, {{1, 2}, {2, 1}}}, 1, {{{2, 1}, {1, 2}}});
}

TEST_F(JoinSegmentsTest, CurveWhoseLengthIsNoNumberIsDropped) {
  support::Outline square = support::Square(5);
  square.points[0][0] = std::numeric_limits<double>::quiet_NaN();
  CurveXferQZ channel(0, Name().c_str());
  // The first segment of the curve has no length; what exceeds the threshold later does not help.
  EXPECT_EQ(PlayAndClose(&channel, square), 1);
  EXPECT_EQ(Bytes(), CurveFileBytes({0, square.points, 4, {}}));
}

TEST_F(JoinSegmentsTest, SecondCloseAddsTheSegmentsToTheListsOnceMore) {
  CurveXferQZ channel(0, Name().c_str());
  const support::Outline triangle{Row(3), {{1, 2}, {2, 3}, {3, 1}}};
  EXPECT_EQ(PlayAndClose(&channel, triangle), 1);
  std::string expected = CurveFileBytes({0, triangle.points, 3, {{{3, 1}, {1, 2}, {2, 3}}}});
  EXPECT_EQ(Bytes(), expected);
  // The list 3-1-2-3 takes 2-3 in front and 3-1 behind, and 1-2 in front: it then has six, of which
  // three fit.
  EXPECT_EQ(channel.Close(), 0);
  expected += support::FileBuilder().Int32(0).Int32(3).Bytes();
  EXPECT_EQ(Bytes(), expected);
}

// Lists outlive a Reset, but what is written are the segments that have their positions now.
TEST_F(JoinSegmentsTest, MismatchEndsACurveAndIsTheResultOnlyOfTheLast) {
  for (const bool followed : {false, true}) {
    CurveXferQZ channel(0, Name().c_str());
    const support::Outline triangle{Row(12), {{3, 1}, {1, 2}, {2, 3}}};
    EXPECT_EQ(PlayAndClose(&channel, triangle), 1);
    std::string expected = CurveFileBytes({0, triangle.points, 3, {{{2, 3}, {3, 1}, {1, 2}}}});
    // 6-2 and 2-6 go in front of the old list. Positions: 3, 1, then 2, 0, 1 as before.
    support::Outline again{Row(12), {{4, 5}, {6, 2}, {7, 8}, {2, 6}, {10, 11}}};
    std::vector<Segments> curves;
    if (followed) {
      again.segments.insert(again.segments.end(), {{9, 12}, {12, 9}});
      curves = {{{12, 9}, {9, 12}}};
    }
    EXPECT_EQ(PlayAndClose(&channel, again), followed ? 1 : 0);
    support::FileBuilder second;
    second.Int32(12).Int32(followed ? 7 : 5);
    for (const auto& point : again.points) second.Doubles({point[0], point[1], point[2]});
    // Five announced, and written up to the one that does not follow.
    second.Int32(5).Int32(2).Int32(6).Int32(6).Int32(2).Int32(7).Int32(8);
    if (followed) second.Int32(2).Int32(12).Int32(9).Int32(9).Int32(12);
    EXPECT_EQ(Bytes(), expected + second.Bytes());
  }
}

}  // namespace
