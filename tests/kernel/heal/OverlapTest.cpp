// The exact test for crossing triangles against whole-number arithmetic, and pairs chosen by hand.

#include <cstdint>
#include <gtest/gtest.h>
#include <random>

#include "kernel/heal/ExactPredicates.h"

namespace heal_test {
namespace {

using kernel::Overlap;
using kernel::OverlapOf;
using kernel::Triangle;

using Whole = std::array<std::int64_t, 3>;
using WholeTriangle = std::array<Whole, 3>;

Whole Minus(const Whole& a, const Whole& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
Whole Cross(const Whole& a, const Whole& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
std::int64_t Dot(const Whole& a, const Whole& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Whole Normal(const WholeTriangle& t) { return Cross(Minus(t[1], t[0]), Minus(t[2], t[0])); }

struct Fraction {
  std::int64_t top, bottom;  // bottom > 0
  bool operator<(const Fraction& other) const { return top * other.bottom < other.top * bottom; }
};

// Where the inside of `t` meets the plane of `other`, along the two planes' common line; false when
// it does not.
bool Span(const WholeTriangle& t, const WholeTriangle& other, const Whole& line, Fraction& low,
          Fraction& high) {
  const Whole normal = Normal(other);
  std::array<std::int64_t, 3> d;
  for (std::size_t i = 0; i < 3; ++i) d[i] = Dot(normal, Minus(t[i], other[0]));
  bool above = false, below = false, any = false;
  for (const std::int64_t each : d) above = above || each > 0, below = below || each < 0;
  if (!above || !below) return false;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t j = (i + 1) % 3;
    if ((d[i] > 0 && d[j] > 0) || (d[i] < 0 && d[j] < 0) || d[i] == d[j]) continue;
    Fraction at{Dot(line, t[i]) * d[j] - Dot(line, t[j]) * d[i], d[j] - d[i]};
    if (at.bottom < 0) at = {-at.top, -at.bottom};
    if (!any || at < low) low = at;
    if (!any || high < at) high = at;
    any = true;
  }
  return any;
}

bool PlainlyCross(const WholeTriangle& a, const WholeTriangle& b) {
  const Whole line = Cross(Normal(a), Normal(b));
  if (line == Whole{0, 0, 0}) return false;
  Fraction aLow{0, 1}, aHigh{0, 1}, bLow{0, 1}, bHigh{0, 1};
  if (!Span(a, b, line, aLow, aHigh) || !Span(b, a, line, bLow, bHigh)) return false;
  return aLow < bHigh && bLow < aHigh;
}

Triangle AsTriangle(const WholeTriangle& t) {
  Triangle triangle;
  for (std::size_t i = 0; i < 3; ++i) {
    triangle[i] = {static_cast<double>(t[i][0]), static_cast<double>(t[i][1]),
                   static_cast<double>(t[i][2])};
  }
  return triangle;
}

TEST(OverlapOf, AgreesWithWholeNumbersOnTrianglesInASmallGrid) {
  std::mt19937 random(3);
  const auto any = [&] {
    WholeTriangle t;
    for (Whole& corner : t) {
      for (std::int64_t& x : corner) x = random() % 4;
    }
    return t;
  };
  int crossing = 0;
  for (int i = 0; i < 200000; ++i) {
    const WholeTriangle a = any(), b = any();
    if (Normal(a) == Whole{0, 0, 0} || Normal(b) == Whole{0, 0, 0}) continue;
    const bool expected = PlainlyCross(a, b);
    crossing += expected ? 1 : 0;
    ASSERT_EQ(OverlapOf(AsTriangle(a), AsTriangle(b)) == Overlap::kCrossing, expected) << i;
    ASSERT_EQ(OverlapOf(AsTriangle(b), AsTriangle(a)) == Overlap::kCrossing, expected) << i;
  }
  EXPECT_GT(crossing, 1000);
}

const Triangle kBase = {{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}};

TEST(OverlapOf, TriangleInThePlaneBesideItSharesNothing) {
  EXPECT_EQ(OverlapOf(kBase, {{{4, 0, 0}, {4, 4, 0}, {0, 4, 0}}}), Overlap::kNone);
}

TEST(OverlapOf, TriangleFoldedOntoItFacesAway) {
  EXPECT_EQ(OverlapOf(kBase, {{{4, 0, 0}, {0, 0, 0}, {1, 1, 0}}}), Overlap::kFacingAway);
}

TEST(OverlapOf, TriangleInThePlaneOverItFacesTheSameWay) {
  EXPECT_EQ(OverlapOf(kBase, {{{1, 1, 0}, {9, 1, 0}, {1, 9, 0}}}), Overlap::kSameFacing);
}

TEST(OverlapOf, CornerOnTheInsideOnlyTouches) {
  EXPECT_EQ(OverlapOf(kBase, {{{1, 1, 0}, {1, 1, 5}, {2, 2, 5}}}), Overlap::kNone);
}

TEST(OverlapOf, SideOnTheInsideOnlyTouches) {
  EXPECT_EQ(OverlapOf(kBase, {{{1, 1, 0}, {2, 1, 0}, {2, 2, 5}}}), Overlap::kNone);
}

TEST(OverlapOf, TriangleFromASharedCornerThroughTheInsideCrosses) {
  EXPECT_EQ(OverlapOf(kBase, {{{0, 0, 0}, {3, 3, 1}, {3, 3, -1}}}), Overlap::kCrossing);
}

TEST(OverlapOf, SmallestStepThroughThePlaneCrosses) {
  EXPECT_EQ(OverlapOf(kBase, {{{1, 1, 5}, {2, 1, 5}, {1.5, 1, -0x1p-1000}}}), Overlap::kCrossing);
  EXPECT_EQ(OverlapOf(kBase, {{{1, 1, 5}, {2, 1, 5}, {1.5, 1, 0x1p-1000}}}), Overlap::kNone);
}

TEST(IsAbove, RayThroughACommonSideMeetsExactlyOneTriangle) {
  const Triangle left = {{{0, 0, 5}, {2, 0, 5}, {2, 2, 5}}};
  const Triangle right = {{{0, 0, 5}, {2, 2, 5}, {0, 2, 5}}};
  for (const kernel::Vec3 point : {kernel::Vec3{1, 1, 0}, {0.25, 0.25, -7}, {1, 0.5, 0}}) {
    EXPECT_NE(kernel::IsAbove(left, point), kernel::IsAbove(right, point));
  }
  EXPECT_FALSE(kernel::IsAbove(left, {1, 0.5, 6}));
  EXPECT_FALSE(kernel::IsAbove(left, {1, 0.5, 5}));
  EXPECT_FALSE(kernel::IsAbove(left, {5, 0.5, 0}));
}

}  // namespace
}  // namespace heal_test
