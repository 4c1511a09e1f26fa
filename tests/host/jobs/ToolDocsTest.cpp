// The worked example in docs/tools.md, against the figures that stand below it there.
#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>

#include "formats/programs/ToolTable.h"

namespace {

formats::ToolTable TableInDocs() {
  std::ifstream stream(std::string(QZ_SOURCE_DIR) + "/docs/tools.md", std::ios::binary);
  const std::string page{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  const std::size_t heading = page.find("## A worked example of every kind");
  const std::size_t begin = page.find("```json\n", heading) + 8;
  const std::size_t end = page.find("```", begin);
  return formats::ParseToolTable(page.substr(begin, end - begin), "docs/tools.md", true);
}

TEST(ToolDocs, TheWorkedExampleComesOutAsThePageSays) {
  const auto table = TableInDocs();
  EXPECT_EQ(table.size(), 10U);
  const std::map<int, std::array<double, 6>> expected = {
      {1, {1, 4, 3, 90, 30, 0.5}},  {2, {0, 5, 0, 90, 0, 0}},      {3, {5, 0, 0, 90, 0, 0}},
      {4, {1.5, 4.5, 0, 90, 0, 0}}, {5, {2, 0, 5, 90, 24.773, 0}}, {6, {0, 4, 0, 45, 0, 0}},
      {7, {0, 1, 45, 90, 3, 0}},    {8, {0, 4, 0, 59, 0, 0}}};
  for (const auto& [number, parameters] : expected) {
    const auto& tool = std::get<formats::ConvexTool>(table.at(number).tool);
    EXPECT_NEAR(tool.cornerRadius, parameters[0], 5e-4) << number;
    EXPECT_NEAR(tool.flatRadius, parameters[1], 5e-4) << number;
    EXPECT_NEAR(tool.upperTaperAngle, parameters[2], 5e-4) << number;
    EXPECT_NEAR(tool.lowerTaperAngle, parameters[3], 5e-4) << number;
    EXPECT_NEAR(tool.taperHeight, parameters[4], 5e-4) << number;
    EXPECT_NEAR(tool.upperBevelRadius, parameters[5], 5e-4) << number;
  }
}

TEST(ToolDocs, TheLollipopComesOutAsThePageSays) {
  const auto table = TableInDocs();
  const auto& tool = std::get<formats::CustomTool>(table.at(9).tool);
  ASSERT_EQ(tool.arcs.size(), 2U);
  EXPECT_EQ(tool.arcs[0].radius, 5);
  EXPECT_TRUE(tool.arcs[1].flip);
  ASSERT_EQ(tool.lines.size(), 2U);
  EXPECT_EQ(tool.lines[0].flatLength, 2);
  EXPECT_EQ(tool.lines[0].height, 30);
  EXPECT_EQ(tool.lines[1].flatLength, 0);
}

}  // namespace
