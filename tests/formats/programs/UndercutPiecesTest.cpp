#include <cmath>
#include <gtest/gtest.h>
#include <stdexcept>

#include "formats/programs/UndercutPieces.h"

namespace {

using formats::UndercutTool;

// A ball of radius 5 on an arm of radius 2: the lower half, the upper half upside down, the arm.
TEST(UndercutPieces, ALollipopIsTwoQuarterArcsAndItsArm) {
  UndercutTool tool;
  tool.armRadius = 2;
  tool.useRegular = tool.useFlip = true;
  tool.regular = tool.flip = {5, 0, 0, 90, 0, 0};
  const auto pieces = formats::UndercutPieces(tool);
  ASSERT_EQ(pieces.arcs.size(), 2U);
  EXPECT_EQ(pieces.arcs[0].index, 0);
  EXPECT_EQ(pieces.arcs[0].radius, 5);
  EXPECT_EQ(pieces.arcs[0].angleMin, 0);
  EXPECT_EQ(pieces.arcs[0].angleMax, 90);
  EXPECT_FALSE(pieces.arcs[0].flip);
  EXPECT_TRUE(pieces.arcs[0].convex);
  EXPECT_EQ(pieces.arcs[1].index, 1);
  EXPECT_TRUE(pieces.arcs[1].flip);
  ASSERT_EQ(pieces.lines.size(), 1U);
  EXPECT_EQ(pieces.lines[0].index, 2);
  EXPECT_EQ(pieces.lines[0].flatLength, 2);
  EXPECT_EQ(pieces.lines[0].taperAngle, 0);
}

// A dovetail: flat tip of radius 6, walls that lean inwards by 30 degrees over a height of 4 when
// seen upside down: the flip profile has a flat end of radius 4 and widens to 4 + 4 tan 30.
TEST(UndercutPieces, ADovetailNarrowsUpwards) {
  UndercutTool tool;
  tool.armRadius = 3;
  tool.armHeight = 20;
  tool.useFlip = true;
  tool.flip = {0, 4, 30, 90, 4, 0};
  const auto pieces = formats::UndercutPieces(tool);
  EXPECT_TRUE(pieces.arcs.empty());
  ASSERT_EQ(pieces.lines.size(), 3U);
  EXPECT_TRUE(pieces.lines[0].flip);
  EXPECT_NEAR(pieces.lines[0].flatLength, 4 + 4 / std::sqrt(3.0), 1e-14);
  EXPECT_EQ(pieces.lines[0].height, 4);
  EXPECT_EQ(pieces.lines[0].taperAngle, 30);
  // The arm goes on to 20 above the tip and ends there.
  EXPECT_EQ(pieces.lines[1].height, 16);
  EXPECT_EQ(pieces.lines[1].flatLength, 3);
  EXPECT_EQ(pieces.lines[2].flatLength, 0);
}

// Pointed below at 45 degrees: lower face up to the corner, then a straight wall to the height.
TEST(UndercutPieces, ALowerFaceComesAheadOfTheCorner) {
  UndercutTool tool;
  tool.armRadius = 1;
  tool.useRegular = true;
  tool.regular = {2, 3, 0, 45, 10, 0};
  const auto pieces = formats::UndercutPieces(tool);
  const double root = std::sqrt(0.5);
  const double faceHeight = 3 + 2 * root;
  ASSERT_EQ(pieces.arcs.size(), 1U);
  ASSERT_EQ(pieces.lines.size(), 3U);
  EXPECT_EQ(pieces.lines[0].index, 0);
  EXPECT_NEAR(pieces.lines[0].height, faceHeight, 1e-14);
  EXPECT_EQ(pieces.lines[0].taperAngle, 45);
  EXPECT_EQ(pieces.arcs[0].index, 1);
  EXPECT_EQ(pieces.arcs[0].angleMin, 45);
  EXPECT_EQ(pieces.arcs[0].angleMax, 90);
  EXPECT_EQ(pieces.arcs[0].flatLength, 3);
  EXPECT_EQ(pieces.lines[1].index, 2);
  EXPECT_NEAR(pieces.lines[1].flatLength, 5, 1e-14);
  EXPECT_NEAR(pieces.lines[1].height, 10 - faceHeight - 2 * root, 1e-13);
}

TEST(UndercutPieces, AnArmThatEndsWithinTheHeadIsNone) {
  UndercutTool tool;
  tool.armRadius = 2;
  tool.armHeight = 5;
  tool.useRegular = true;
  tool.regular = {5, 0, 0, 90, 0, 0};
  const auto pieces = formats::UndercutPieces(tool);
  ASSERT_EQ(pieces.lines.size(), 1U);
  EXPECT_EQ(pieces.lines[0].flatLength, 0);
}

TEST(UndercutPieces, RefusesAToolWithoutAHead) {
  EXPECT_THROW(formats::UndercutPieces({}), std::invalid_argument);
}

}  // namespace
