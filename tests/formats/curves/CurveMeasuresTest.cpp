#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numbers>
#include <optional>
#include <random>
#include <vector>

#include "formats/curves/CurveMeasures.h"

namespace {

using formats::Curves;
using formats::CurvesMeasures;
using formats::MeasureCurves;
using Place = std::array<double, 3>;
using Number = std::optional<std::size_t>;

// The curve has points of its own.
void Add(Curves& curves, const std::vector<Place>& places) {
  formats::Curve curve;
  for (const Place& place : places) {
    curve.points.push_back(static_cast<std::int32_t>(curves.points.size()));
    curves.points.push_back(place);
  }
  curves.curves.push_back(curve);
}

std::vector<Place> Rectangle(double x0, double y0, double x1, double y1) {
  return {{x0, y0, 0}, {x1, y0, 0}, {x1, y1, 0}, {x0, y1, 0}};
}

std::vector<Place> Reversed(std::vector<Place> places) {
  std::reverse(places.begin(), places.end());
  return places;
}

Curves Of(const std::vector<std::vector<Place>>& all) {
  Curves curves;
  for (const auto& places : all) Add(curves, places);
  return curves;
}

std::vector<Number> Nesting(const std::vector<std::vector<Place>>& all) {
  std::vector<Number> outside;
  for (const auto& curve : MeasureCurves(Of(all)).curves) outside.push_back(curve.outside);
  return outside;
}

TEST(MeasureCurves, TellsLengthInSpaceAndAreaAlongZWithItsSign) {
  // A rhombus whose sides are 5 long, standing upon one corner, and the same way around backwards.
  const std::vector<Place> slanted = {{0, 0, 0}, {4, 0, 3}, {4, 3, 7}, {0, 3, 4}};
  const CurvesMeasures measures = MeasureCurves(Of({slanted, Reversed(Rectangle(9, 0, 10, 2))}));
  EXPECT_DOUBLE_EQ(measures.curves[0].length, 20);
  EXPECT_DOUBLE_EQ(measures.curves[0].area, 12);
  EXPECT_DOUBLE_EQ(measures.curves[1].length, 6);
  EXPECT_DOUBLE_EQ(measures.curves[1].area, -2);
  EXPECT_DOUBLE_EQ(measures.length, 26);
  EXPECT_DOUBLE_EQ(measures.area, 14);
  EXPECT_EQ(measures.pointsInCurves, 8U);
  ASSERT_TRUE(measures.box);
  EXPECT_THAT(measures.box->lower, testing::ElementsAre(0, 0, 0));
  EXPECT_THAT(measures.box->upper, testing::ElementsAre(10, 3, 7));
}

TEST(MeasureCurves, OfNoCurvesAreZeroAndWithoutABox) {
  Curves curves;
  curves.points.push_back({1, 2, 3});
  const CurvesMeasures measures = MeasureCurves(curves);
  EXPECT_EQ(measures.length, 0);
  EXPECT_EQ(measures.area, 0);
  EXPECT_EQ(measures.holes, 0U);
  EXPECT_FALSE(measures.box);
}

TEST(MeasureCurves, AreasKeepTheirDigitsFarFromTheOrigin) {
  const double far = std::ldexp(1.0, 40);
  const CurvesMeasures measures = MeasureCurves(Of({Rectangle(far, far, far + 0.5, far + 0.25)}));
  EXPECT_EQ(measures.area, 0.125);
}

TEST(MeasureCurves, TakesHolesFromTheAreaWhicheverWayTheyRun) {
  for (const bool turned : {false, true}) {
    const auto hole = Rectangle(1, 1, 3, 3);
    const CurvesMeasures measures = MeasureCurves(
        Of({Rectangle(0, 0, 10, 4), turned ? Reversed(hole) : hole, Rectangle(1.5, 1.5, 2, 2)}));
    EXPECT_DOUBLE_EQ(measures.area, 40 - 4 + 0.25);
    EXPECT_EQ(measures.holes, 1U);
    EXPECT_EQ(measures.curves[0].depth, 0U);
    EXPECT_TRUE(measures.curves[1].IsHole());
    EXPECT_EQ(measures.curves[2].depth, 2U);
    EXPECT_FALSE(measures.curves[2].IsHole());
  }
}

TEST(MeasureCurves, CurvesBesideEachOtherLieInNone) {
  EXPECT_THAT(Nesting({Rectangle(0, 0, 1, 1), Rectangle(0, 2, 1, 3), Rectangle(2, 0, 3, 9),
                       Rectangle(-5, 4, 1, 5)}),
              testing::Each(Number()));
}

TEST(MeasureCurves, CurveLiesInTheNextOneAroundItWhateverTheirOrder) {
  EXPECT_THAT(Nesting({Rectangle(3, 3, 4, 4), Rectangle(0, 0, 10, 10), Rectangle(2, 2, 5, 5),
                       Rectangle(6, 3, 7, 4), Rectangle(6.25, 3.25, 6.5, 3.5)}),
              testing::ElementsAre(Number(2), Number(), Number(1), Number(1), Number(3)));
}

TEST(MeasureCurves, CurveUnderAnArchLiesInNone) {
  const std::vector<Place> arch = {{0, 0, 0}, {1, 0, 0}, {1, 4, 0}, {4, 4, 0},
                                   {4, 0, 0}, {5, 0, 0}, {5, 5, 0}, {0, 5, 0}};
  EXPECT_THAT(Nesting({arch, Rectangle(2, 1, 3, 2), Rectangle(2, 4.25, 3, 4.75)}),
              testing::ElementsAre(Number(), Number(), Number(0)));
  EXPECT_THAT(Nesting({Rectangle(2, 1, 3, 2), Reversed(arch), Rectangle(2, 4.25, 3, 4.75)}),
              testing::ElementsAre(Number(), Number(), Number(1)));
}

TEST(MeasureCurves, CurvesThatTouchFromInsideAndOutsideAreToldApart) {
  const std::vector<Place> inCorner = {{0, 0, 0}, {2, 1, 0}, {1, 2, 0}};
  const std::vector<Place> besideCorner = {{0, 0, 0}, {-1, 1, 0}, {-1, -1, 0}};
  const std::vector<Place> belowCorner = {{0, 0, 0}, {2, -2, 0}, {2, -1, 0}};
  const std::vector<Place> onTheWall = {{0, 3, 0}, {1, 2.5, 0}, {1, 3.5, 0}};
  const std::vector<Place> onTheFarWall = {{4, 3, 0}, {5, 2.5, 0}, {5, 3.5, 0}};
  EXPECT_THAT(Nesting({inCorner, besideCorner, belowCorner, onTheWall, onTheFarWall,
                       Rectangle(0, 0, 4, 4)}),
              testing::ElementsAre(Number(5), Number(), Number(), Number(5), Number(), Number()));
}

TEST(MeasureCurves, CurvesInsideEachOtherFromOneCornerOnAreToldApart) {
  const auto wedge = [](double slope) {
    return std::vector<Place>{{0, 0, 0}, {10, -slope, 0}, {10, slope, 0}};
  };
  EXPECT_THAT(Nesting({wedge(1), wedge(4), wedge(2), wedge(3)}),
              testing::ElementsAre(Number(2), Number(), Number(3), Number(1)));
}

TEST(MeasureCurves, CurvesWithPointsThatAreNotFiniteOrWithoutWidthLieInNone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  Curves curves = Of({Rectangle(0, 0, 9, 9),
                      {{1, 1, 0}, {2, nan, 0}, {2, 2, 0}},
                      {{1, 1, 0}, {2, 1, 0}, {infinite, 2, 0}},
                      {{4, 1, 0}, {4, 2, 0}, {4, 3, 0}},
                      {{1e300, 1, 0}, {-1e300, 1e300, 0}, {4, -1e300, 0}},
                      Rectangle(5, 5, 6, 6)});
  const CurvesMeasures measures = MeasureCurves(curves);
  EXPECT_EQ(measures.nonFinitePoints, 2U);
  std::vector<Number> outside;
  for (const auto& curve : measures.curves) outside.push_back(curve.outside);
  EXPECT_THAT(outside,
              testing::ElementsAre(Number(), Number(), Number(), Number(), Number(), Number(0)));
}

TEST(MeasureCurves, ThereAndBackHoldsNothing) {
  const std::vector<Place> thereAndBack = {{0, 0, 0}, {9, 0, 0}};
  EXPECT_THAT(Nesting({thereAndBack, Rectangle(1, 1, 2, 2), Rectangle(-1, -1, 10, 10)}),
              testing::ElementsAre(Number(2), Number(2), Number()));
}

TEST(MeasureCurves, CurvesThatCrossAreMeasuredAllTheSame) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> anywhere(-1, 1);
  Curves curves;
  for (int i = 0; i < 300; ++i) {
    std::vector<Place> places;
    for (int j = 0; j < 3 + i % 20; ++j) {
      // On a coarse grid, so that places fall together as well.
      places.push_back({std::round(8 * anywhere(random)), std::round(8 * anywhere(random)), 0});
    }
    Add(curves, places);
  }
  EXPECT_EQ(MeasureCurves(curves).curves.size(), 300U);
}

// Stars in stars: each knows which one it was put into.
class Stars {
 public:
  explicit Stars(unsigned seed) : m_random(seed) {}

  void Grow(double x, double y, double radius, Number outside, int depth) {
    AddStar(x, y, radius);
    m_expected.push_back(outside);
    const Number own = m_expected.size() - 1;
    if (depth == 0) return;
    // Children lie on a ring well within the star's narrowest place.
    const int children = std::uniform_int_distribution<int>(0, 5)(m_random);
    const double turn = Between(0, 6);
    for (int i = 0; i < children; ++i) {
      const double angle = turn + i * 2 * std::numbers::pi / 5;
      Grow(x + 0.25 * radius * std::cos(angle), y + 0.25 * radius * std::sin(angle), 0.14 * radius,
           own, depth - 1);
    }
  }

  // In another order than that in which they grew.
  void ExpectNesting() {
    std::vector<std::size_t> order(m_expected.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::shuffle(order.begin(), order.end(), m_random);
    Curves curves;
    std::vector<std::size_t> position(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
      position[order[i]] = i;
      Add(curves, m_stars[order[i]]);
    }
    const CurvesMeasures measures = MeasureCurves(curves);
    for (std::size_t i = 0; i < order.size(); ++i) {
      const Number& outside = m_expected[i];
      EXPECT_EQ(measures.curves[position[i]].outside,
                outside ? Number(position[*outside]) : Number());
    }
  }

  std::size_t Count() const { return m_stars.size(); }

 private:
  double Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(m_random);
  }

  void AddStar(double x, double y, double radius) {
    const int corners = std::uniform_int_distribution<int>(8, 40)(m_random);
    const bool clockwise = corners % 2 == 0;
    std::vector<Place> places;
    for (int i = 0; i < corners; ++i) {
      const double angle = (i + Between(0, 0.9)) * 2 * std::numbers::pi / corners;
      const double reach = radius * Between(0.75, 1);
      places.push_back({x + reach * std::cos(angle), y + reach * std::sin(angle), 0});
    }
    m_stars.push_back(clockwise ? Reversed(places) : places);
  }

  std::mt19937 m_random;
  std::vector<std::vector<Place>> m_stars;
  std::vector<Number> m_expected;
};

TEST(MeasureCurves, NestsRandomStarsAsTheyWerePut) {
  std::size_t all = 0;
  for (unsigned seed = 0; seed < 40; ++seed) {
    Stars stars(seed);
    for (int i = 0; i < 3; ++i) stars.Grow(3.0 * i, 0.5 * i, 1, {}, 4);
    stars.ExpectNesting();
    all += stars.Count();
  }
  EXPECT_GT(all, 1000U);
}

}  // namespace
