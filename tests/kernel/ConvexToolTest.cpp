#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <string>
#include <variant>

#include "kernel/sweep/ConvexTool.h"
#include "support/geometry/PlainTool.h"

namespace kernel {
namespace {

using ::testing::HasSubstr;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kRootThree = std::numbers::sqrt3;

ConvexTool Good(const formats::ConvexTool& parameters) {
  std::variant<ConvexTool, std::string> made = ConvexTool::Make(parameters);
  if (const auto* error = std::get_if<std::string>(&made)) ADD_FAILURE() << *error;
  return std::get<ConvexTool>(made);
}

std::string ErrorOf(const formats::ConvexTool& parameters) {
  const std::variant<ConvexTool, std::string> made = ConvexTool::Make(parameters);
  const auto* error = std::get_if<std::string>(&made);
  return error == nullptr ? "" : *error;
}

TEST(ConvexTool, BallHasTheCirclesRadiiAndHeights) {
  const ConvexTool ball = Good({5, 0, 0, 90, 0, 0});
  EXPECT_DOUBLE_EQ(ball.RadiusAt(1), 3);
  EXPECT_DOUBLE_EQ(ball.RadiusAt(5), 5);
  EXPECT_DOUBLE_EQ(ball.RadiusAt(1000), 5);
  EXPECT_DOUBLE_EQ(ball.HeightAt(0), 0);
  EXPECT_DOUBLE_EQ(ball.HeightAt(3), 1);
  EXPECT_DOUBLE_EQ(ball.WidestRadius(), 5);
  EXPECT_DOUBLE_EQ(ball.CharacteristicRadius(), 5);
}

TEST(ConvexTool, FlatEndMillIsACylinderFromTheTipOn) {
  const ConvexTool flat = Good({0, 6, 0, 90, 0, 0});
  EXPECT_EQ(flat.RadiusAt(0), 6);
  EXPECT_EQ(flat.RadiusAt(-1e-9), 0);
  EXPECT_EQ(flat.RadiusAt(50), 6);
  EXPECT_EQ(flat.HeightAt(5.999), 0);
  EXPECT_EQ(flat.WidestRadius(), 6);
  EXPECT_EQ(flat.CharacteristicRadius(), 6);
}

TEST(ConvexTool, LowerTaperAngleOfZeroCountsAsNinety) {
  EXPECT_EQ(Good({0, 6, 0, 0, 0, 0}).RadiusAt(0), 6);
}

TEST(ConvexTool, BullNoseRoundsTheCornerFromTheFlatOn) {
  const ConvexTool bull = Good({1, 4, 0, 90, 0, 0});
  EXPECT_EQ(bull.HeightAt(4), 0);
  EXPECT_NEAR(bull.HeightAt(4.6), 0.2, 1e-15);
  EXPECT_DOUBLE_EQ(bull.RadiusAt(0.4), 4.8);
  EXPECT_DOUBLE_EQ(bull.WidestRadius(), 5);
  EXPECT_DOUBLE_EQ(bull.ProfileTop(), 1);
  EXPECT_DOUBLE_EQ(bull.CharacteristicRadius(), 1);
}

TEST(ConvexTool, DrillRisesFromItsPointToItsCylinder) {
  const ConvexTool drill = Good({0, 4, 0, 60, 0, 0});
  EXPECT_DOUBLE_EQ(drill.HeightAt(3), kRootThree);
  EXPECT_DOUBLE_EQ(drill.ProfileTop(), 4 / kRootThree);
  EXPECT_DOUBLE_EQ(drill.RadiusAt(1), kRootThree);
  EXPECT_DOUBLE_EQ(drill.WidestRadius(), 4);
}

TEST(ConvexTool, TaperWidensFromTheFlatAndEndsAtItsHeight) {
  const ConvexTool endless = Good({0, 2, 30, 90, 0, 0});
  EXPECT_DOUBLE_EQ(endless.HeightAt(3), kRootThree);
  EXPECT_EQ(endless.WidestRadius(), kInfinity);
  const ConvexTool ending = Good({0, 2, 30, 90, 3, 0});
  EXPECT_DOUBLE_EQ(ending.WidestRadius(), 2 + kRootThree);
  EXPECT_DOUBLE_EQ(ending.ProfileTop(), 3);
}

TEST(ConvexTool, RoundedPointTouchesTheConeAtItsTangent) {
  // A ball of radius 1 in a cone of half angle 30: the centre stands 1 / sin 30 = 2 above the tip,
  // the cone ends at cos 30 from the axis, 2 - sin 30 up.
  const ConvexTool tool = Good({1, 0, 0, 30, 0, 0});
  EXPECT_DOUBLE_EQ(tool.ProfileTop(), 2);
  EXPECT_DOUBLE_EQ(tool.WidestRadius(), 1);
  EXPECT_DOUBLE_EQ(tool.HeightAt(kRootThree / 2), 1.5);
  EXPECT_DOUBLE_EQ(tool.RadiusAt(0.75), 0.75 / kRootThree);
}

TEST(ConvexTool, BevelTouchesTaperAndCylinder) {
  // Taper of 60 degrees from radius 1 at the tip to 1 + 3 tan 60 at height 3; a bevel of radius 2
  // takes 2 tan 30 off either side of that edge.
  const ConvexTool tool = Good({0, 1, 60, 90, 3, 2});
  const double widest = 1 + 3 * kRootThree;
  const double tangent = 2 / kRootThree;
  EXPECT_DOUBLE_EQ(tool.WidestRadius(), widest);
  EXPECT_DOUBLE_EQ(tool.ProfileTop(), 3 + tangent);
  EXPECT_NEAR(tool.RadiusAt(3 - tangent / 2), widest - tangent * kRootThree / 2, 1e-12);
  EXPECT_DOUBLE_EQ(tool.RadiusAt(3 + tangent - 1), widest - 2 + kRootThree);
}

TEST(ConvexTool, BevelWithoutAnUpperEdgeChangesNothing) {
  EXPECT_EQ(Good({0, 2, 30, 90, 0, 1}).Profile().size(), 2U);
  EXPECT_EQ(Good({0, 2, 0, 90, 5, 1}).Profile().size(), 2U);
}

TEST(ConvexTool, PointedToolOfWallOnlyIsAllowed) {
  const ConvexTool tool = Good({0, 0, 45, 90, 0, 0});
  EXPECT_DOUBLE_EQ(tool.RadiusAt(3), 3);
  EXPECT_EQ(tool.CharacteristicRadius(), kInfinity);
}

TEST(ConvexTool, ParametersThatMakeNoSolidAreNamed) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(ErrorOf({-1, 5, 0, 90, 0, 0}), HasSubstr("corner radius"));
  EXPECT_THAT(ErrorOf({nan, 5, 0, 90, 0, 0}), HasSubstr("corner radius"));
  EXPECT_THAT(ErrorOf({1, -5, 0, 90, 0, 0}), HasSubstr("flat radius"));
  EXPECT_THAT(ErrorOf({1, kInfinity, 0, 90, 0, 0}), HasSubstr("flat radius"));
  EXPECT_THAT(ErrorOf({1, 5, -1, 90, 0, 0}), HasSubstr("upper taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, 90, 90, 0, 0}), HasSubstr("upper taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, nan, 90, 0, 0}), HasSubstr("upper taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, 0, -1, 0, 0}), HasSubstr("lower taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, 0, 90.5, 0, 0}), HasSubstr("lower taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, 0, nan, 0, 0}), HasSubstr("lower taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, 40, 30, 0, 0}), HasSubstr("upper taper angle"));
  EXPECT_THAT(ErrorOf({1, 5, 0, 90, -2, 0}), HasSubstr("taper height"));
  EXPECT_THAT(ErrorOf({1, 5, 0, 90, nan, 0}), HasSubstr("taper height"));
  EXPECT_THAT(ErrorOf({1, 5, 0, 90, 0, -3}), HasSubstr("upper bevel radius"));
  EXPECT_THAT(ErrorOf({1, 5, 0, 90, 0, kInfinity}), HasSubstr("upper bevel radius"));
}

TEST(ConvexTool, TaperHeightBelowTheWallsStartIsRefused) {
  EXPECT_THAT(ErrorOf({1, 5, 0, 90, 0.999, 0}), HasSubstr("taper height"));
  EXPECT_EQ(ErrorOf({1, 5, 0, 90, 1, 0}), "");
  EXPECT_THAT(ErrorOf({1, 5, 10, 90, 0.5, 0}), HasSubstr("taper height"));
}

TEST(ConvexTool, BevelThatDoesNotFitIsRefused) {
  // At 60 degrees a wall of height 3 is 6 long: room for a bevel of 6 / tan 30.
  EXPECT_EQ(ErrorOf({0, 1, 60, 90, 3, 10.39}), "");
  EXPECT_THAT(ErrorOf({0, 1, 60, 90, 3, 10.40}), HasSubstr("upper bevel radius"));
}

TEST(ConvexTool, ToolOfNoWidthIsRefused) {
  EXPECT_THAT(ErrorOf({0, 0, 0, 90, 0, 0}), HasSubstr("no width"));
  EXPECT_THAT(ErrorOf({0, 0, 0, 45, 10, 0}), HasSubstr("no width"));
}

TEST(ConvexTool, ShapeBeyondTheNumbersIsRefused) {
  EXPECT_THAT(ErrorOf({1e300, 1e300, 0, 1e-300, 0, 0}), HasSubstr("out of range"));
}

const formats::ConvexTool kShapes[] = {
    {5, 0, 0, 90, 0, 0},     {0, 6, 0, 90, 0, 0},   {1, 4, 0, 90, 0, 0},  {1, 2, 10, 90, 0, 0},
    {1, 2, 10, 80, 12, 1},   {0, 0, 45, 90, 0, 0},  {0, 0, 45, 60, 5, 0}, {0, 4, 0, 59, 0, 0},
    {0.5, 2, 20, 60, 9, 2},  {2, 0, 30, 30, 0, 0},  {1, 0, 0, 30, 0, 0},  {0, 1, 60, 90, 3, 2},
    {0.25, 3, 85, 88, 4, 1}, {2, 0.5, 0, 45, 8, 0},
};

TEST(ConvexTool, OutlinesAreJoinedAndConvex) {
  for (const formats::ConvexTool& parameters : kShapes) {
    const ConvexTool tool = Good(parameters);
    EXPECT_EQ(tool.Profile().front().start, (ProfilePoint{0, 0}));
    EXPECT_EQ(tool.Profile().back().end.z, kInfinity);
    ProfilePoint end{0, 0};
    ProfilePoint normal{0, -1};
    for (const ProfilePiece& piece : tool.Profile()) {
      EXPECT_EQ(piece.start, end);
      EXPECT_GE(Cross(normal, piece.startNormal), -1e-15);
      EXPECT_GE(Cross(piece.startNormal, piece.endNormal), 0);
      EXPECT_GE(piece.end.r, piece.start.r);
      EXPECT_GE(piece.end.z, piece.start.z);
      end = piece.end;
      normal = piece.endNormal;
    }
  }
}

TEST(ConvexTool, OutlinePointsLieOnThePlainlyComputedTool) {
  for (const formats::ConvexTool& parameters : kShapes) {
    const ConvexTool tool = Good(parameters);
    const support::PlainTool plain(parameters);
    for (int step = 0; step < 400; ++step) {
      const double z = 0.01 + 0.0507 * step;
      EXPECT_NEAR(plain.Excess(tool.RadiusAt(z), z), 0, 1e-12);
    }
    for (int step = 0; step < 400; ++step) {
      const double r = 0.01 + 0.0507 * step;
      if (r >= tool.WidestRadius()) break;
      EXPECT_NEAR(plain.Excess(r, tool.HeightAt(r)), 0, 1e-12);
    }
  }
}

TEST(ConvexTool, NearestIsTheDistanceToTheClosestOutlinePoint) {
  for (const formats::ConvexTool& parameters : kShapes) {
    const ConvexTool tool = Good(parameters);
    const support::PlainTool plain(parameters);
    for (int across = 0; across < 15; ++across) {
      for (int up = 0; up < 29; ++up) {
        const double r = 0.01371 + 0.61 * across;
        const double z = -3.007 + 0.53 * up;
        const ProfileNearest nearest = tool.Nearest({r, z});
        EXPECT_EQ(nearest.distance > 0, plain.Excess(r, z) > 0);
        EXPECT_NEAR(std::hypot(nearest.normal.r, nearest.normal.z), 1, 1e-14);
        const ProfilePoint foot = ProfilePoint{r, z} - nearest.distance * nearest.normal;
        EXPECT_NEAR(plain.Excess(std::abs(foot.r), foot.z), 0, 1e-11);
        // No point of the outline is closer.
        for (int step = 0; step < 300; ++step) {
          const double height = 0.05 * step;
          const double reach = std::hypot(tool.RadiusAt(height) - r, height - z);
          EXPECT_GE(reach, std::abs(nearest.distance) - 1e-12);
        }
      }
    }
  }
}

TEST(ConvexTool, NearestKeepsItsSignWherePiecesJoinSmoothly) {
  for (const formats::ConvexTool& parameters : kShapes) {
    const ConvexTool tool = Good(parameters);
    for (std::size_t i = 1; i < tool.Profile().size(); ++i) {
      const ProfilePiece& piece = tool.Profile()[i];
      for (const double depth : {1e-3, 1e-6, 1e-9}) {
        const ProfilePoint normal = piece.startNormal;
        const ProfilePoint outside = piece.start + depth * normal;
        const ProfilePoint inside = piece.start - depth * normal;
        EXPECT_GT(tool.Nearest(outside).distance, 0.9 * depth);
        EXPECT_LE(tool.Nearest(inside).distance, 1e-12);
      }
    }
  }
}

TEST(ConvexTool, SupportIsTheFarthestPointBelowTheTop) {
  const ConvexTool ball = Good({5, 0, 0, 90, 0, 0});
  EXPECT_DOUBLE_EQ(ball.Support({1, 0}, 1), 3);
  EXPECT_DOUBLE_EQ(ball.Support({1, 0}, 8), 5);
  EXPECT_DOUBLE_EQ(ball.Support({0, 1}, 8), 8);
  EXPECT_DOUBLE_EQ(ball.Support({0, -1}, 8), 0);
  EXPECT_DOUBLE_EQ(ball.Support({0.6, -0.8}, 8), 5 - 4);
}

}  // namespace
}  // namespace kernel
