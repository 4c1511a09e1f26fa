#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "formats/FileError.h"
#include "formats/programs/ToolTable.h"

namespace {

formats::ToolTable TableOf(const std::string& tools, bool metric = true) {
  return formats::ParseToolTable(R"({"units": "mm", "tools": [)" + tools + "]}", "t.json", metric);
}

formats::ConvexTool ToolOf(const std::string& members) {
  const auto table = TableOf(R"({"number": 1, )" + members + "}");
  return std::get<formats::ConvexTool>(table.at(1).tool);
}

std::string FaultIn(const std::string& text) {
  try {
    formats::ParseToolTable(text, "t.json", true);
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return {};
}

std::string FaultOfTool(const std::string& members) {
  return FaultIn(R"({"units": "mm", "tools": [{"number": 1, )" + members + "}]}");
}

void ExpectTool(const formats::ConvexTool& tool, const std::array<double, 6>& expected) {
  EXPECT_DOUBLE_EQ(tool.cornerRadius, expected[0]);
  EXPECT_DOUBLE_EQ(tool.flatRadius, expected[1]);
  EXPECT_DOUBLE_EQ(tool.upperTaperAngle, expected[2]);
  EXPECT_DOUBLE_EQ(tool.lowerTaperAngle, expected[3]);
  EXPECT_DOUBLE_EQ(tool.taperHeight, expected[4]);
  EXPECT_DOUBLE_EQ(tool.upperBevelRadius, expected[5]);
}

TEST(ToolTable, ReadsTheSixParameters) {
  ExpectTool(ToolOf(R"("kind": "convex", "cornerRadius": 1, "flatRadius": 2, "upperTaperAngle": 3,
                       "lowerTaperAngle": 80, "taperHeight": 50, "upperBevelRadius": 6)"),
             {1, 2, 3, 80, 50, 6});
  ExpectTool(ToolOf(R"("kind": "convex", "flatRadius": 2)"), {0, 2, 0, 90, 0, 0});
}

TEST(ToolTable, MapsTheCommonKinds) {
  ExpectTool(ToolOf(R"("kind": "flat", "diameter": 12)"), {0, 6, 0, 90, 0, 0});
  ExpectTool(ToolOf(R"("kind": "ball", "diameter": 12)"), {6, 0, 0, 90, 0, 0});
  ExpectTool(ToolOf(R"("kind": "bullnose", "diameter": 12, "cornerRadius": 1.5)"),
             {1.5, 4.5, 0, 90, 0, 0});
  ExpectTool(ToolOf(R"("kind": "drill", "diameter": 8, "pointAngle": 118)"), {0, 4, 0, 59, 0, 0});
  ExpectTool(ToolOf(R"("kind": "chamfer", "diameter": 8, "pointAngle": 90)"), {0, 4, 0, 45, 0, 0});
}

TEST(ToolTable, AChamferCutterWithAFlatTipWidensToItsDiameter) {
  // From radius 1 to radius 4 at 45 degrees: 3 high.
  ExpectTool(ToolOf(R"("kind": "chamfer", "diameter": 8, "tipDiameter": 2, "pointAngle": 90)"),
             {0, 1, 45, 90, 3, 0});
}

TEST(ToolTable, ATaperedCutterWidensFromItsTip) {
  ExpectTool(ToolOf(R"("kind": "tapered", "tipDiameter": 4, "taperAngle": 5)"),
             {0, 2, 5, 90, 0, 0});
  ExpectTool(ToolOf(R"("kind": "tapered", "tipDiameter": 4, "taperAngle": 5, "cornerRadius": 2)"),
             {2, 0, 5, 90, 0, 0});
  // The wall leaves the corner at radius 1 + cos 30, height 1 - sin 30, and reaches 4 at 30
  // degrees.
  const double tangent = 1 / std::sqrt(3.0);
  const double height = 0.5 + (4 - (1 + std::sqrt(3.0) / 2)) / tangent;
  ExpectTool(ToolOf(R"("kind": "tapered", "tipDiameter": 4, "taperAngle": 30, "cornerRadius": 1,
                       "maxDiameter": 8)"),
             {1, 1, 30, 90, height, 0});
}

TEST(ToolTable, ConvertsLengthsAndLeavesAnglesAlone) {
  const auto table = formats::ParseToolTable(
      R"({"units": "inch", "tools": [{"number": 7, "kind": "convex", "cornerRadius": 0.5,
          "flatRadius": 1, "upperTaperAngle": 3, "taperHeight": 10, "upperBevelRadius": 0.25}]})",
      "t.json", true);
  const auto tool = std::get<formats::ConvexTool>(table.at(7).tool);
  EXPECT_DOUBLE_EQ(tool.cornerRadius, 12.7);
  EXPECT_DOUBLE_EQ(tool.flatRadius, 25.4);
  EXPECT_DOUBLE_EQ(tool.upperTaperAngle, 3);
  EXPECT_DOUBLE_EQ(tool.taperHeight, 254);
  EXPECT_DOUBLE_EQ(tool.upperBevelRadius, 6.35);
  const auto inInches = TableOf(R"({"number": 1, "kind": "flat", "diameter": 50.8})", false);
  EXPECT_DOUBLE_EQ(std::get<formats::ConvexTool>(inInches.at(1).tool).flatRadius, 1);
}

TEST(ToolTable, KeepsNameAndColour) {
  const auto table = TableOf(R"({"number": 3, "name": "mill", "colour": 9, "kind": "flat",
                                 "diameter": 1}, {"number": 1, "kind": "ball", "diameter": 1})");
  EXPECT_EQ(table.at(3).name, "mill");
  EXPECT_EQ(table.at(3).colour, 9);
  EXPECT_EQ(table.at(1).name, "");
  EXPECT_EQ(table.at(1).colour, std::nullopt);
}

TEST(ToolTable, ReadsCustomPieces) {
  const auto table = TableOf(
      R"({"number": 1, "kind": "custom",
          "arcs": [{"index": 1, "radius": 2, "angleMin": 0, "angleMax": 90, "flatLength": 3,
                    "flip": true, "convex": false}],
          "lines": [{"index": 0, "height": 4, "taperAngle": 5, "flatLength": 6, "flip": true}]})");
  const auto& tool = std::get<formats::CustomTool>(table.at(1).tool);
  ASSERT_EQ(tool.arcs.size(), 1U);
  EXPECT_EQ(tool.arcs[0].index, 1);
  EXPECT_EQ(tool.arcs[0].radius, 2);
  EXPECT_EQ(tool.arcs[0].angleMax, 90);
  EXPECT_EQ(tool.arcs[0].flatLength, 3);
  EXPECT_TRUE(tool.arcs[0].flip);
  EXPECT_FALSE(tool.arcs[0].convex);
  ASSERT_EQ(tool.lines.size(), 1U);
  EXPECT_EQ(tool.lines[0].height, 4);
  EXPECT_EQ(tool.lines[0].taperAngle, 5);
  EXPECT_EQ(tool.lines[0].flatLength, 6);
  EXPECT_TRUE(tool.lines[0].flip);
}

TEST(ToolTable, AnUndercutToolComesAsPieces) {
  const auto table = TableOf(
      R"({"number": 1, "kind": "undercut", "armRadius": 2, "regular": {"cornerRadius": 5},
          "flip": {"cornerRadius": 5}})");
  EXPECT_TRUE(std::holds_alternative<formats::CustomTool>(table.at(1).tool));
}

TEST(ToolTable, NamesThePlaceOfAFault) {
  EXPECT_EQ(FaultOfTool(R"("kind": "flat")"), "t.json: tools[0].diameter is missing");
  EXPECT_EQ(FaultOfTool(R"("kind": "flat", "diameter": "x")"),
            "t.json: tools[0].diameter is not a number");
  EXPECT_EQ(FaultOfTool(R"("kind": "flat", "diameter": 0)"),
            "t.json: tools[0].diameter is not above zero");
  EXPECT_EQ(FaultOfTool(R"("kind": "flat", "diameter": 5, "diametre": 5)"),
            "t.json: tools[0].diametre is not known here");
  EXPECT_EQ(FaultOfTool(R"("kind": "ball", "diameter": 5, "colour": 256)"),
            "t.json: tools[0].colour is not a whole number from 0 to 255");
  EXPECT_EQ(FaultOfTool(R"("kind": "lathe")"),
            "t.json: tools[0].kind \"lathe\" is none of convex, flat, ball, bullnose, tapered, "
            "chamfer, drill, undercut, custom");
  EXPECT_EQ(FaultOfTool(R"("kind": "custom", "lines": [{"index": 0, "height": 0}]})").substr(0, 7),
            "t.json:");
  EXPECT_EQ(FaultOfTool(R"("kind": "custom", "lines": [{"index": 0, "height": 0}])"),
            "t.json: tools[0].lines[0].height is not above zero");
  EXPECT_EQ(FaultOfTool(R"("kind": "undercut", "armRadius": 1, "flip": {"cornerRadius": -1})"),
            "t.json: tools[0].flip.cornerRadius is negative");
}

TEST(ToolTable, RefusesConvexToolsThatAreNone) {
  const auto fault = [](const std::string& members) {
    return FaultOfTool(R"("kind": "convex", )" + members);
  };
  EXPECT_EQ(fault(R"("cornerRadius": -1)"), "t.json: tools[0].cornerRadius is negative");
  EXPECT_EQ(fault(R"("flatRadius": -1)"), "t.json: tools[0].flatRadius is negative");
  EXPECT_EQ(fault(R"("flatRadius": 1, "upperTaperAngle": 90)"),
            "t.json: tools[0].upperTaperAngle is not within 0 to below 90 degrees");
  EXPECT_EQ(fault(R"("flatRadius": 1, "lowerTaperAngle": 91)"),
            "t.json: tools[0].lowerTaperAngle is not within above 0 to 90 degrees");
  EXPECT_EQ(fault(R"("flatRadius": 1, "lowerTaperAngle": 30, "upperTaperAngle": 40)"),
            "t.json: tools[0].upperTaperAngle is above lowerTaperAngle");
  EXPECT_EQ(fault(R"("cornerRadius": 5, "taperHeight": 4)"),
            "t.json: tools[0].taperHeight is below the start of the wall, 5.000000");
  EXPECT_EQ(fault(R"("cornerRadius": 0)"),
            "t.json: tools[0].cornerRadius and flatRadius are 0: the tool has no width");
  // At 45 degrees the wall of height 1 is 1.414 long; a bevel of 4 takes 4 tan 22.5 = 1.657 of it.
  EXPECT_EQ(fault(R"("flatRadius": 1, "upperTaperAngle": 45, "taperHeight": 1,
                     "upperBevelRadius": 4)"),
            "t.json: tools[0].upperBevelRadius does not fit on the wall");
  EXPECT_EQ(fault(R"("flatRadius": 1, "upperTaperAngle": 45, "taperHeight": 1,
                     "upperBevelRadius": 3)"),
            "");
  EXPECT_EQ(fault(R"("lowerTaperAngle": 0, "flatRadius": 1)"), "");
}

TEST(ToolTable, RefusesFilesThatAreNoTables) {
  EXPECT_NE(FaultIn(""), "");
  EXPECT_NE(FaultIn("{"), "");
  EXPECT_EQ(FaultIn("[]"), "t.json: the file is not an object");
  EXPECT_EQ(FaultIn("{}"), "t.json: units is missing");
  EXPECT_EQ(FaultIn(R"({"units": "cm", "tools": []})"),
            "t.json: units \"cm\" is neither mm nor inch");
  EXPECT_EQ(FaultIn(R"({"units": "mm"})"), "t.json: tools is missing");
  EXPECT_EQ(FaultIn(R"({"units": "mm", "tools": {}})"), "t.json: tools is not a list");
  EXPECT_EQ(FaultIn(R"({"units": "mm", "tools": [5]})"), "t.json: tools[0] is not an object");
  EXPECT_EQ(FaultIn(R"({"units": "mm", "tools": [], "more": 1})"),
            "t.json: more is not known here");
  EXPECT_EQ(FaultIn(R"({"units": "mm", "tools": [{"number": 1, "kind": "flat", "diameter": 1},
                        {"number": 1, "kind": "flat", "diameter": 1}]})"),
            "t.json: tools[1].number 1 is taken already");
  EXPECT_EQ(FaultIn(R"({"units": "mm", "tools": [{"number": 0}]})"),
            "t.json: tools[0].number is not a whole number from 1 to 999999999");
}

TEST(ToolTable, ASyntaxErrorIsToldWithItsLine) {
  const std::string fault = FaultIn("{\n\"units\": mm }");
  EXPECT_EQ(fault.substr(0, 43), "t.json: parse error at line 2, column 10: s");
}

}  // namespace
