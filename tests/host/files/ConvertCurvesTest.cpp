#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <string>

#include "formats/FileError.h"
#include "host/files/ConvertCurves.h"
#include "host/files/FileKind.h"
#include "support/CurveFile.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::CurvesVariant;
using formats::DrawingFormat;
using formats::DrawingUnit;
using support::MessageOf;
using support::NamesIn;
using support::ReadWholeFile;
using support::WriteWholeFile;
using testing::HasSubstr;

class ConvertCurves : public testing::Test {
 protected:
  // A triangle at the height z; the fourth point is in no curve.
  void WriteTriangle(int mode, double z) {
    WriteWholeFile(
        directory_ / "a.curves",
        support::CurveFileBytes(
            {mode, {{0, 0, z}, {4, 0, z}, {0, 4, z}, {1, 1, 99}}, 3, {{{1, 2}, {2, 3}, {3, 1}}}}));
  }

  host::CurvesConversion Convert(const std::string& output) {
    return host::ConvertCurves(directory_ / "a.curves", directory_ / output,
                               DrawingUnit::Millimetre);
  }

  std::string MessageFor(const std::string& output) {
    return MessageOf<formats::FileError>([&] { Convert(output); });
  }

  support::TempDirectory directory_;
};

TEST_F(ConvertCurves, MakesTheDrawingThatTheExtensionAsksForOfBothVariants) {
  for (const int mode : {0, 1}) {
    WriteTriangle(mode, 0);
    const host::CurvesConversion toSvg = Convert("a.svg");
    EXPECT_EQ(toSvg.variant, mode == 1 ? CurvesVariant::Tree : CurvesVariant::Plain);
    EXPECT_EQ(toSvg.format, DrawingFormat::Svg);
    EXPECT_EQ(toSvg.curves, 1U);
    EXPECT_EQ(toSvg.points, 3U);
    EXPECT_THAT(ReadWholeFile(directory_ / "a.svg"), HasSubstr("\nM0 0L4 0L0 -4Z\n"));
    EXPECT_EQ(Convert("a.DXF").format, DrawingFormat::Dxf);
    EXPECT_THAT(ReadWholeFile(directory_ / "a.DXF"), HasSubstr("\nPOLYLINE\n"));
  }
}

TEST_F(ConvertCurves, HeightsAreLostInAFlatDrawingOnly) {
  WriteTriangle(0, 0);
  EXPECT_FALSE(Convert("a.svg").heightsLost);
  WriteTriangle(0, 1.5);
  EXPECT_TRUE(Convert("a.svg").heightsLost);
  EXPECT_FALSE(Convert("a.dxf").heightsLost);
  EXPECT_THAT(ReadWholeFile(directory_ / "a.dxf"), HasSubstr("\n30\n1.5\n"));
}

TEST_F(ConvertCurves, RefusesOtherExtensionsAndItsInput) {
  WriteTriangle(0, 0);
  EXPECT_THAT(MessageFor("b.stl"), HasSubstr("b.stl: curves can become .svg and .dxf files only"));
  std::filesystem::create_hard_link(directory_ / "a.curves", directory_ / "same.svg");
  EXPECT_THAT(MessageFor("same.svg"), HasSubstr("is the input itself"));
}

TEST_F(ConvertCurves, LeavesTheOldDrawingWhenTheCurvesCannotBeReadOrDrawn) {
  WriteWholeFile(directory_ / "b.svg", "mine");
  WriteWholeFile(directory_ / "a.curves", "binary curves");
  EXPECT_THAT(MessageFor("b.svg"), HasSubstr("a.curves: the file ends within the point count"));
  WriteWholeFile(
      directory_ / "a.curves",
      support::CurveFileBytes({0,
                               {{0, 0, 0}, {std::numeric_limits<double>::infinity(), 0, 0}},
                               2,
                               {{{1, 2}, {2, 1}}}}));
  EXPECT_THAT(MessageFor("b.svg"), HasSubstr("b.svg: point 2 has a coordinate"));
  EXPECT_EQ(ReadWholeFile(directory_ / "b.svg"), "mine");
  EXPECT_THAT(NamesIn(directory_.Path()), testing::ElementsAre("a.curves", "b.svg"));
}

TEST_F(ConvertCurves, FileIsKnownByItsFirstBytesAndADamagedOneByItsName) {
  WriteTriangle(1, 0);
  std::filesystem::copy(directory_ / "a.curves", directory_ / "outline.tmp");
  EXPECT_EQ(host::KindOf(directory_ / "outline.tmp"), host::FileKind::kCurves);
  WriteWholeFile(directory_ / "b.curves", "something else");
  EXPECT_EQ(host::KindOf(directory_ / "b.curves"), host::FileKind::kCurves);
  EXPECT_STREQ(host::NameOf(host::FileKind::kCurves), "curves");
}

}  // namespace
