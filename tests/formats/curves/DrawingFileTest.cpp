#include <clocale>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <string>

#include "formats/FileError.h"
#include "formats/curves/DrawingFile.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using formats::Curves;
using formats::DrawingFormat;
using formats::DrawingUnit;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using testing::HasSubstr;

// A square from -10 to 40 along x and 0 to 50 along y with a triangular hole, at z = 2.5; point 1
// is in no curve.
Curves SquareWithHole() {
  Curves curves;
  curves.points = {{900, 900, 900}, {-10, 0, 2.5},    {40, 0, 2.5},  {40, 50, 2.5},
                   {-10, 50, 2.5},  {0.125, 10, 2.5}, {10, 20, 2.5}, {20, 10, 2.5}};
  curves.curves = {{{1, 2, 3, 4}, {}}, {{5, 6, 7}, {}}};
  return curves;
}

std::string Drawing(const Curves& curves, DrawingFormat format,
                    DrawingUnit unit = DrawingUnit::Millimetre) {
  const TempDirectory directory;
  formats::WriteDrawing(directory / "a", curves, format, unit);
  return ReadWholeFile(directory / "a");
}

TEST(WriteSvg, DrawsToScaleWithYUpAndHolesByTheFillRule) {
  // A fiftieth of 50 is free on every side, and lines are 50 / 500 wide.
  EXPECT_EQ(Drawing(SquareWithHole(), DrawingFormat::Svg),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"52mm\" height=\"52mm\" "
            "viewBox=\"-11 -51 52 52\">\n"
            "<path fill=\"#c8d0d8\" fill-rule=\"evenodd\" stroke=\"#000000\" stroke-width=\"0.1\" "
            "stroke-linejoin=\"round\" d=\"\n"
            "M-10 0L40 0L40 -50L-10 -50Z\n"
            "M0.125 -10L10 -20L20 -10Z\n"
            "\"/>\n"
            "</svg>\n");
}

TEST(WriteSvg, SizesInInchesAreSaidInInches) {
  EXPECT_THAT(Drawing(SquareWithHole(), DrawingFormat::Svg, DrawingUnit::Inch),
              HasSubstr(" width=\"52in\" height=\"52in\" viewBox=\"-11 -51 52 52\">"));
}

TEST(WriteSvg, OfNoCurvesIsAnEmptyDrawingThatHasASize) {
  const std::string text = Drawing({}, DrawingFormat::Svg);
  EXPECT_THAT(text, HasSubstr("width=\"0.04mm\" height=\"0.04mm\""));
  EXPECT_THAT(text, HasSubstr(" d=\"\n\"/>\n"));
}

TEST(WriteSvg, RefusesCurvesWhoseExtentIsNoNumber) {
  Curves curves;
  curves.points = {{-1e308, 0, 0}, {1e308, 0, 0}, {0, 1, 0}};
  curves.curves = {{{0, 1, 2}, {}}};
  EXPECT_THAT(MessageOf<formats::FileError>([&] { Drawing(curves, DrawingFormat::Svg); }),
              HasSubstr("the curves are too large to be drawn"));
}

constexpr const char* kDxfHeader =
    "999\nlengths in millimetres\n"
    "0\nSECTION\n2\nHEADER\n"
    "9\n$ACADVER\n1\nAC1009\n"
    "9\n$EXTMIN\n10\n-10.0\n20\n0.0\n30\n2.5\n"
    "9\n$EXTMAX\n10\n40.0\n20\n50.0\n30\n2.5\n"
    "0\nENDSEC\n"
    "0\nSECTION\n2\nENTITIES\n";

std::string Vertex(const std::string& x, const std::string& y, const std::string& z) {
  return "0\nVERTEX\n8\n0\n10\n" + x + "\n20\n" + y + "\n30\n" + z + "\n";
}

TEST(WriteDxf, MakesClosedPolylinesAtTheirHeight) {
  const std::string begin = "0\nPOLYLINE\n8\n0\n66\n1\n10\n0.0\n20\n0.0\n30\n2.5\n70\n1\n";
  const std::string end = "0\nSEQEND\n8\n0\n";
  EXPECT_EQ(Drawing(SquareWithHole(), DrawingFormat::Dxf),
            kDxfHeader + begin + Vertex("-10.0", "0.0", "2.5") + Vertex("40.0", "0.0", "2.5") +
                Vertex("40.0", "50.0", "2.5") + Vertex("-10.0", "50.0", "2.5") + end + begin +
                Vertex("0.125", "10.0", "2.5") + Vertex("10.0", "20.0", "2.5") +
                Vertex("20.0", "10.0", "2.5") + end + "0\nENDSEC\n0\nEOF\n");
}

TEST(WriteDxf, CurveThatIsNotFlatIsAPolylineInSpace) {
  Curves curves;
  curves.points = {{0, 0, 1}, {1, 0, 1}, {0, 1, 2}};
  curves.curves = {{{0, 1, 2}, {}}};
  const std::string flag = "70\n32\n";
  EXPECT_THAT(Drawing(curves, DrawingFormat::Dxf),
              HasSubstr("0\nPOLYLINE\n8\n0\n66\n1\n10\n0.0\n20\n0.0\n30\n0.0\n70\n9\n" +
                        Vertex("0.0", "0.0", "1.0") + flag + Vertex("1.0", "0.0", "1.0") + flag +
                        Vertex("0.0", "1.0", "2.0") + flag + "0\nSEQEND\n8\n0\n"));
}

TEST(WriteDxf, NamesInchesAndOfNoCurvesHasNoExtent) {
  EXPECT_EQ(Drawing({}, DrawingFormat::Dxf, DrawingUnit::Inch),
            "999\nlengths in inches\n0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
            "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
}

TEST(WriteDxf, NumbersHaveNoExponentAndAllTheirDigits) {
  Curves curves;
  curves.points = {{1e-9, 0.1, -1e21}, {1, std::nextafter(1.0, 2.0), -1e21}, {0, -0.0, -1e21}};
  curves.curves = {{{0, 1, 2}, {}}};
  const std::string text = Drawing(curves, DrawingFormat::Dxf);
  EXPECT_THAT(text, HasSubstr(Vertex("0.000000001", "0.1", "-1000000000000000000000.0")));
  EXPECT_THAT(text, HasSubstr("\n20\n1.0000000000000002\n"));
  curves.points[0][0] = std::numeric_limits<double>::denorm_min();
  EXPECT_THAT(Drawing(curves, DrawingFormat::Dxf),
              HasSubstr("\n10\n0." + std::string(323, '0') + "5\n"));
}

TEST(WriteDrawing, RefusesPointsThatAreNotFiniteUnlessNoCurveHasThem) {
  const TempDirectory directory;
  for (const DrawingFormat format : {DrawingFormat::Svg, DrawingFormat::Dxf}) {
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
      Curves curves = SquareWithHole();
      curves.points[0][0] = value;
      formats::WriteDrawing(directory / "a", curves, format, DrawingUnit::Inch);
      curves.points[6][2] = value;
      EXPECT_THAT(MessageOf<formats::FileError>([&] {
                    formats::WriteDrawing(directory / "a", curves, format, DrawingUnit::Inch);
                  }),
                  testing::EndsWith("a: point 7 has a coordinate that is not finite"));
    }
  }
}

TEST(WriteDrawing, TakesNoNoticeOfTheLocale) {
  const std::string svg = Drawing(SquareWithHole(), DrawingFormat::Svg);
  const std::string dxf = Drawing(SquareWithHole(), DrawingFormat::Dxf);
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252"}) {
    std::setlocale(LC_ALL, name);
    EXPECT_EQ(Drawing(SquareWithHole(), DrawingFormat::Svg), svg);
    EXPECT_EQ(Drawing(SquareWithHole(), DrawingFormat::Dxf), dxf);
  }
  std::setlocale(LC_ALL, "C");
}

TEST(DrawingFormatByExtension, TakesCapitalsToo) {
  EXPECT_EQ(formats::DrawingFormatByExtension("dir.svg/a.DXF"), DrawingFormat::Dxf);
  EXPECT_EQ(formats::DrawingFormatByExtension("a.Svg"), DrawingFormat::Svg);
  EXPECT_EQ(formats::DrawingFormatByExtension("svg"), std::nullopt);
  EXPECT_EQ(formats::DrawingFormatByExtension("a.svgz"), std::nullopt);
}

}  // namespace
