#include <cmath>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "formats/FileError.h"
#include "formats/curves/CurvesFile.h"
#include "support/CurveFile.h"
#include "support/FileBuilder.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::Curves;
using formats::CurvesVariant;
using support::CurveFileBytes;
using support::FileBuilder;
using support::MessageOf;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;

// A triangle through points 2, 3, 4 and one there and back between 1 and 4, in space.
FileBuilder TwoCurves(bool tree) {
  FileBuilder bytes;
  bytes.Text(tree ? "binary tree_curves" : "binary curves").Int32(4).Int32(9);
  bytes.Doubles({0, 0, 0}).Doubles({1, 0, 0.5}).Doubles({1, 2, 0.5}).Doubles({0, 2, -3});
  bytes.Int32(3);
  if (tree) bytes.Int32(0).Int32(0);
  bytes.Int32(2).Int32(3).Int32(3).Int32(4).Int32(4).Int32(2);
  bytes.Int32(2);
  if (tree) bytes.Int32(5).Int32(-6);
  bytes.Int32(4).Int32(1).Int32(1).Int32(4);
  return bytes;
}

class ReadCurves : public testing::Test {
 protected:
  Curves Read(std::string_view bytes) {
    WriteWholeFile(directory_ / "a.curves", bytes);
    return formats::ReadCurves(directory_ / "a.curves");
  }

  // Without the name of the file.
  std::string MessageFor(std::string_view bytes) {
    WriteWholeFile(directory_ / "a.curves", bytes);
    const std::string file = directory_ / "a.curves";
    const std::string message = MessageOf<formats::FileError>([&] { formats::ReadCurves(file); });
    EXPECT_THAT(message, testing::StartsWith(file + ": "));
    return message.substr(file.size() + 2);
  }

  TempDirectory directory_;
};

TEST_F(ReadCurves, TakesPointsAndCurvesOfThePlainVariant) {
  const Curves curves = Read(TwoCurves(false).Bytes());
  EXPECT_EQ(curves.variant, CurvesVariant::Plain);
  EXPECT_EQ(curves.segments, 9);
  ASSERT_EQ(curves.points.size(), 4U);
  EXPECT_THAT(curves.points[3], ElementsAre(0, 2, -3));
  ASSERT_EQ(curves.curves.size(), 2U);
  EXPECT_THAT(curves.curves[0].points, ElementsAre(1, 2, 3));
  EXPECT_THAT(curves.curves[1].points, ElementsAre(3, 0));
  EXPECT_THAT(curves.curves[1].treeFields, ElementsAre(0, 0));
}

TEST_F(ReadCurves, KeepsTheFieldsOfTheTreeVariant) {
  const Curves curves = Read(TwoCurves(true).Bytes());
  EXPECT_EQ(curves.variant, CurvesVariant::Tree);
  ASSERT_EQ(curves.curves.size(), 2U);
  EXPECT_THAT(curves.curves[0].points, ElementsAre(1, 2, 3));
  EXPECT_THAT(curves.curves[0].treeFields, ElementsAre(0, 0));
  EXPECT_THAT(curves.curves[1].points, ElementsAre(3, 0));
  EXPECT_THAT(curves.curves[1].treeFields, ElementsAre(5, -6));
}

TEST_F(ReadCurves, TakesAFileWithoutCurves) {
  const Curves curves = Read(CurveFileBytes({0, {{1, 2, 3}}, 7, {}}));
  EXPECT_EQ(curves.points.size(), 1U);
  EXPECT_TRUE(curves.curves.empty());
  EXPECT_TRUE(Read(CurveFileBytes({1, {}, 0, {}})).points.empty());
}

TEST_F(ReadCurves, PassesOnCoordinatesThatAreNotFinite) {
  EXPECT_TRUE(std::isnan(Read(CurveFileBytes({0, {{1, std::nan(""), 3}}, 0, {}})).points[0][1]));
}

TEST_F(ReadCurves, RefusesEveryTruncatedLengthAndNamesTheByte) {
  for (const bool tree : {false, true}) {
    const std::string whole = TwoCurves(tree).Bytes();
    // Between two curves, and after the points, a file is whole.
    const std::size_t afterPoints = (tree ? 18U : 13U) + 8 + 4 * 24;
    const std::size_t afterFirst = afterPoints + (tree ? 12U : 4U) + 3 * 8;
    for (std::size_t length = 0; length < whole.size(); ++length) {
      if (length == afterPoints || length == afterFirst) {
        EXPECT_EQ(Read(whole.substr(0, length)).curves.size(), length == afterPoints ? 0U : 1U);
        continue;
      }
      const std::string message = MessageFor(whole.substr(0, length));
      EXPECT_THAT(message, testing::StartsWith("the file ends within the ")) << length;
      EXPECT_THAT(message, HasSubstr(" (byte ")) << length;
    }
  }
}

TEST_F(ReadCurves, RefusesOtherHeaders) {
  const std::string wanted =
      "the header is neither \"binary curves\" nor \"binary tree_curves\" (byte 0)";
  EXPECT_EQ(MessageFor("binary surface and more than enough bytes"), wanted);
  EXPECT_EQ(MessageFor("binary tree_curver and more than enough bytes"), wanted);
  EXPECT_EQ(MessageFor("Binary curves and more than enough bytes"), wanted);
}

TEST_F(ReadCurves, RefusesNegativeCounts) {
  EXPECT_EQ(MessageFor(FileBuilder().Text("binary curves").Int32(-1).Int32(0).Bytes()),
            "the point count is negative (byte 13)");
  EXPECT_EQ(MessageFor(FileBuilder().Text("binary tree_curves").Int32(0).Int32(-5).Bytes()),
            "the segment count is negative (byte 22)");
}

TEST_F(ReadCurves, RefusesCountsThatTheFileCannotHoldBeforeItTakesMemory) {
  EXPECT_EQ(MessageFor(FileBuilder().Text("binary curves").Int32(INT32_MAX).Int32(0).Bytes()),
            "the file ends within the points: 2147483647 announced, room for 0 (byte 21)");
  EXPECT_EQ(
      MessageFor(FileBuilder()
                     .Text("binary curves")
                     .Int32(1)
                     .Int32(0)
                     .Doubles({0, 0, 0})
                     .Int32(INT32_MAX)
                     .Int32(1)
                     .Int32(1)
                     .Bytes()),
      "the file ends within the curve's segments: 2147483647 announced, room for 1 (byte 49)");
}

// Points at bytes 21, 45 and 69; the curve's count at 93, its segments from 97 on.
std::string OneCurve(std::int32_t count, std::initializer_list<std::int32_t> numbers) {
  FileBuilder bytes;
  bytes.Text("binary curves").Int32(3).Int32(3);
  bytes.Doubles({0, 0, 0}).Doubles({1, 0, 0}).Doubles({0, 1, 0}).Int32(count);
  for (const std::int32_t number : numbers) bytes.Int32(number);
  return bytes.Bytes();
}

TEST_F(ReadCurves, RefusesCurvesOfFewerThanTwoSegments) {
  for (const std::int32_t count : {1, 0, -1}) {
    EXPECT_EQ(MessageFor(OneCurve(count, {1, 1})),
              "the curve's segment count " + std::to_string(count) + " is below 2 (byte 93)");
  }
}

TEST_F(ReadCurves, RefusesPointNumbersThatTheFileDoesNotHave) {
  EXPECT_EQ(MessageFor(OneCurve(3, {1, 2, 2, 4, 4, 1})),
            "the segment's end 4 is not in 1..3 (byte 109)");
  EXPECT_EQ(MessageFor(OneCurve(3, {0, 2, 2, 3, 3, 0})),
            "the segment's start 0 is not in 1..3 (byte 97)");
  EXPECT_EQ(MessageFor(OneCurve(3, {1, -7, 2, 3, 3, 1})),
            "the segment's end -7 is not in 1..3 (byte 101)");
}

TEST_F(ReadCurves, RefusesSegmentsThatDoNotFollowEachOther) {
  EXPECT_EQ(MessageFor(OneCurve(3, {1, 2, 3, 2, 2, 1})),
            "the segment starts at point 3 and not at 2, where the one before it ends (byte 105)");
}

TEST_F(ReadCurves, RefusesCurvesThatDoNotEndWhereTheyStart) {
  EXPECT_EQ(MessageFor(OneCurve(3, {1, 2, 2, 3, 3, 2})),
            "the curve ends at point 2 and not at 1, where it starts (byte 117)");
}

TEST_F(ReadCurves, NamesAFileThatIsNotThere) {
  EXPECT_THAT(MessageOf<formats::FileError>([&] { formats::ReadCurves(directory_ / "none"); }),
              HasSubstr("none: cannot be opened"));
}

TEST_F(ReadCurves, VariantIsKnownByTheFirstBytes) {
  const auto variantOf = [this](std::string_view bytes) {
    WriteWholeFile(directory_ / "b", bytes);
    return formats::CurvesVariantByContent(directory_ / "b");
  };
  EXPECT_EQ(variantOf("binary curves"), CurvesVariant::Plain);
  EXPECT_EQ(variantOf("binary curves, damaged"), CurvesVariant::Plain);
  EXPECT_EQ(variantOf("binary tree_curves"), CurvesVariant::Tree);
  EXPECT_EQ(variantOf("binary tree_curve"), std::nullopt);
  EXPECT_EQ(variantOf("binary surface"), std::nullopt);
  EXPECT_EQ(variantOf(""), std::nullopt);
}

TEST_F(ReadCurves, VariantsAreNamedAsInTheFile) {
  EXPECT_STREQ(formats::NameOf(CurvesVariant::Plain), "binary curves");
  EXPECT_STREQ(formats::NameOf(CurvesVariant::Tree), "binary tree_curves");
}

}  // namespace
