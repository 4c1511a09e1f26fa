#pragma once

// A path with each type of tool, and the checks that every field of it has arrived.

#include <gmock/gmock.h>

#include "formats/ToolpathRecords.h"
#include "support/FileBuilder.h"

// Tolerances 0.1, 0.2, 0.3, the matrix 1..9 and the origin 10, 20, 30.
inline void AddPlacement(support::FileBuilder& bytes) {
  bytes.Doubles({0.1, 0.2, 0.3}).Doubles({1, 2, 3, 4, 5, 6, 7, 8, 9}).Doubles({10, 20, 30});
}

inline formats::PathRecord Placed(std::int32_t pathType, std::int32_t colour) {
  formats::PathRecord record;
  record.pathType = pathType;
  record.colour = colour;
  record.sweepToler = 0.1;
  record.pathToler = 0.2;
  record.compressToler = 0.3;
  record.matrix = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  record.origin = {10, 20, 30};
  return record;
}

inline formats::PathRecord ConvexPath() {
  formats::PathRecord record = Placed(1, 9);
  record.tool = formats::ConvexTool{1.5, 2.5, 5, 45, 12, 0.5};
  record.cuts = {{{1, 2, 3}}};
  return record;
}

inline formats::PathRecord UndercutPath() {
  formats::PathRecord record = Placed(2, 200);
  formats::UndercutTool tool;
  tool.armRadius = 1;
  tool.armHeight = 2;
  tool.useFlip = true;
  tool.flip = {3, 4, 5, 6, 7, 8};
  tool.useRegular = false;
  tool.regular = {9, 10, 11, 12, 13, 14};
  record.tool = tool;
  record.cuts = {{{1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0}}};
  return record;
}

inline formats::PathRecord CustomPath() {
  formats::PathRecord record = Placed(1, 3);
  formats::CustomTool tool;
  tool.arcs = {{0, 1, 2, 3, 4, true, false}, {2, 5, 6, 7, 8, false, true}};
  tool.lines = {{1, 9, 10, 11, true}};
  record.tool = tool;
  record.cuts = {{{1, 2, 3, 4, 5, 6}}};
  return record;
}

inline void ExpectPlaced(const formats::PathRecord& record) {
  EXPECT_EQ(record.sweepToler, 0.1);
  EXPECT_EQ(record.pathToler, 0.2);
  EXPECT_EQ(record.compressToler, 0.3);
  EXPECT_THAT(record.matrix, testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_THAT(record.origin, testing::ElementsAre(10, 20, 30));
}

inline void ExpectConvex(const formats::ConvexTool& tool, double cornerRadius, double flatRadius,
                         double upperTaperAngle, double lowerTaperAngle, double taperHeight,
                         double upperBevelRadius) {
  EXPECT_EQ(tool.cornerRadius, cornerRadius);
  EXPECT_EQ(tool.flatRadius, flatRadius);
  EXPECT_EQ(tool.upperTaperAngle, upperTaperAngle);
  EXPECT_EQ(tool.lowerTaperAngle, lowerTaperAngle);
  EXPECT_EQ(tool.taperHeight, taperHeight);
  EXPECT_EQ(tool.upperBevelRadius, upperBevelRadius);
}

inline void ExpectUndercut(const formats::Tool& tool) {
  const auto& undercut = std::get<formats::UndercutTool>(tool);
  EXPECT_EQ(undercut.armRadius, 1);
  EXPECT_EQ(undercut.armHeight, 2);
  EXPECT_TRUE(undercut.useFlip);
  ExpectConvex(undercut.flip, 3, 4, 5, 6, 7, 8);
  EXPECT_FALSE(undercut.useRegular);
  ExpectConvex(undercut.regular, 9, 10, 11, 12, 13, 14);
}

inline void ExpectCustom(const formats::Tool& tool) {
  const auto& custom = std::get<formats::CustomTool>(tool);
  ASSERT_EQ(custom.arcs.size(), 2U);
  EXPECT_EQ(custom.arcs[0].index, 0);
  EXPECT_EQ(custom.arcs[0].radius, 1);
  EXPECT_EQ(custom.arcs[0].angleMin, 2);
  EXPECT_EQ(custom.arcs[0].angleMax, 3);
  EXPECT_EQ(custom.arcs[0].flatLength, 4);
  EXPECT_TRUE(custom.arcs[0].flip);
  EXPECT_FALSE(custom.arcs[0].convex);
  EXPECT_EQ(custom.arcs[1].index, 2);
  EXPECT_EQ(custom.arcs[1].radius, 5);
  EXPECT_FALSE(custom.arcs[1].flip);
  EXPECT_TRUE(custom.arcs[1].convex);
  ASSERT_EQ(custom.lines.size(), 1U);
  EXPECT_EQ(custom.lines[0].index, 1);
  EXPECT_EQ(custom.lines[0].height, 9);
  EXPECT_EQ(custom.lines[0].taperAngle, 10);
  EXPECT_EQ(custom.lines[0].flatLength, 11);
  EXPECT_TRUE(custom.lines[0].flip);
}
