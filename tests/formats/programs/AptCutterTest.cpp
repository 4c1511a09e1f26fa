#include <gtest/gtest.h>
#include <string>

#include "formats/programs/AptCutter.h"
#include "formats/programs/GCodeError.h"

namespace {

void ExpectTool(const std::vector<double>& numbers, const std::vector<double>& wanted) {
  const formats::ConvexTool tool = formats::ToolOfCutter(numbers, 1);
  EXPECT_NEAR(tool.cornerRadius, wanted[0], 1e-6);
  EXPECT_NEAR(tool.flatRadius, wanted[1], 1e-6);
  EXPECT_NEAR(tool.upperTaperAngle, wanted[2], 1e-12);
  EXPECT_NEAR(tool.lowerTaperAngle, wanted[3], 1e-12);
  EXPECT_NEAR(tool.taperHeight, wanted[4], 1e-12);
  EXPECT_EQ(tool.upperBevelRadius, 0);
}

std::string Fault(const std::vector<double>& numbers) {
  try {
    formats::ToolOfCutter(numbers, 1);
  } catch (const formats::GCodeError& error) {
    return error.what();
  }
  return {};
}

// The table of docs/apt.md.
TEST(AptCutter, TakesTheToolsOfTheManual) {
  ExpectTool({5, 0, 2.5, 0, 0, 0, 51}, {0, 2.5, 0, 90, 0});
  ExpectTool({10, 5}, {5, 0, 0, 90, 0});
  ExpectTool({12, 1.5, 4.5, 1.5, 0, 0, 60}, {1.5, 4.5, 0, 90, 0});
  ExpectTool({4, 0, 2, 1.201721, 31, 0, 83}, {0, 2, 0, 59, 0});
  ExpectTool({12, 0, 6, 6, 45, 0, 40}, {0, 6, 0, 45, 0});
}

TEST(AptCutter, AThirdNumberAloneChangesNothing) {
  ExpectTool({12, 1.5, 4.5}, {1.5, 4.5, 0, 90, 0});
  ExpectTool({12, 1.5, 60}, {1.5, 4.5, 0, 90, 0});
  ExpectTool({12, 1.5, 4.5, 1.5}, {1.5, 4.5, 0, 90, 0});
}

TEST(AptCutter, ALeaningWallEndsAtTheHeight) {
  // A ball of radius 2 under a wall of 30 degrees: the wall touches it and meets the tip's plane
  // at 2 (1/cos 30 - tan 30) = 1.154701.
  ExpectTool({2.309401, 2, 0, 2, 0, 30, 20}, {2, 0, 30, 90, 20});
}

TEST(AptCutter, ASquareEndMayComeWithoutItsCentre) {
  ExpectTool({8, 0, 0, 0, 0, 0, 40}, {0, 4, 0, 90, 0});
}

TEST(AptCutter, RefusesNumbersThatContradictEachOther) {
  EXPECT_EQ(Fault({10, 2, 0, 2, 0, 0, 50}),
            "CUTTER whose corner makes it 4.000000 wide, not its diameter");
  EXPECT_EQ(Fault({10, 2, 3, 1, 0, 0, 50}),
            "CUTTER whose corner does not touch its lower face: the centre is 2.000000 above the "
            "tip when it does");
  EXPECT_EQ(Fault({10, 0, 5, 0, 60, 30, 50}),
            "CUTTER whose angles are negative or make 90 degrees together");
  EXPECT_EQ(Fault({}), "CUTTER takes one to seven numbers");
  EXPECT_EQ(Fault({1, 2, 3, 4, 5, 6, 7, 8}), "CUTTER takes one to seven numbers");
  EXPECT_NE(Fault({-10}), "");
  EXPECT_NE(Fault({0}), "");
}

}  // namespace
