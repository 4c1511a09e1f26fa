#include <cmath>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "formats/FileError.h"
#include "host/files/DescribeFile.h"
#include "host/files/DescriptionText.h"
#include "support/CurveFile.h"
#include "support/FileBuilder.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using Json = nlohmann::ordered_json;
using formats::Curves;
using support::MessageOf;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::Contains;
using testing::HasSubstr;

// Squares in each other, each a unit further in, the first one 10 wide; the odd ones clockwise.
Curves Nested(int count) {
  Curves curves;
  for (int i = 0; i < count; ++i) {
    const double low = i, high = 10 - i;
    const auto first = static_cast<std::int32_t>(curves.points.size());
    curves.points.insert(curves.points.end(),
                         {{low, low, 0}, {high, low, 0}, {high, high, 0}, {low, high, 0}});
    const bool clockwise = i % 2 == 1;
    const auto step = clockwise ? -1 : 1;
    formats::Curve curve;
    for (std::int32_t j = 0; j < 4; ++j) curve.points.push_back(first + (4 + step * j) % 4);
    curves.curves.push_back(curve);
  }
  curves.segments = static_cast<std::int32_t>(curves.points.size());
  return curves;
}

TEST(DescribeCurves, SaysWhichCurveIsAHoleOfWhich) {
  const Json d = host::DescribeCurves(Nested(3));
  EXPECT_EQ(d["holes"], 1);
  EXPECT_DOUBLE_EQ(d["length"].get<double>(), 40 + 32 + 24);
  EXPECT_DOUBLE_EQ(d["area"].get<double>(), 100 - 64 + 36);
  ASSERT_EQ(d["curves"].size(), 3U);
  EXPECT_EQ(d["curves"][0]["inside"], nullptr);
  EXPECT_EQ(d["curves"][0]["hole"], false);
  EXPECT_EQ(d["curves"][0]["clockwise"], false);
  EXPECT_EQ(d["curves"][1]["inside"], 1);
  EXPECT_EQ(d["curves"][1]["hole"], true);
  EXPECT_EQ(d["curves"][1]["clockwise"], true);
  EXPECT_EQ(d["curves"][1]["area"], -64.0);
  EXPECT_EQ(d["curves"][2]["inside"], 2);
  EXPECT_EQ(d["curves"][2]["hole"], false);
  EXPECT_EQ(d["curves"][2]["depth"], 2);
  EXPECT_EQ(d["box"]["upper"], Json({10.0, 10.0, 0.0}));
}

TEST(DescribeCurves, CountsPointsAndSegmentsThatNoCurveHas) {
  Curves curves = Nested(1);
  curves.points.push_back({1, 2, std::nan("")});
  curves.segments = 7;
  const Json d = host::DescribeCurves(curves);
  EXPECT_EQ(d["points"], 5);
  EXPECT_EQ(d["points_in_no_curve"], 1);
  EXPECT_EQ(d["non_finite_points"], 1);
  EXPECT_EQ(d["segments"], 7);
  EXPECT_EQ(d["segments_in_curves"], 4);
}

TEST(DescribeFile, TellsTheVariantAndTheTreeFieldsOfAFileOfCurves) {
  const TempDirectory directory;
  support::FileBuilder bytes;
  bytes.Text("binary tree_curves").Int32(2).Int32(2).Doubles({0, 0, 0}).Doubles({3, 4, 0});
  bytes.Int32(2).Int32(8).Int32(-9).Int32(1).Int32(2).Int32(2).Int32(1);
  WriteWholeFile(directory / "a", bytes.Bytes());
  const Json d = host::DescribeFile(directory / "a");
  EXPECT_EQ(d["kind"], "curves");
  EXPECT_EQ(d["variant"], "binary tree_curves");
  EXPECT_EQ(d["bytes"], 18 + 8 + 48 + 12 + 16);
  EXPECT_EQ(d["curves"][0]["tree_fields"], Json({8, -9}));
  EXPECT_EQ(d["curves"][0]["length"], 10.0);
  EXPECT_THAT(host::DescriptionText(d, "mm"),
              Contains("  curve 1: points 2, counter-clockwise, length 10 mm, area 0 mm^2, tree "
                       "fields 8 -9"));
}

TEST(DescribeFile, NamesTheByteAtWhichAFileOfCurvesGoesWrong) {
  const TempDirectory directory;
  const std::string whole = support::CurveFileBytes({0, {{0, 0, 0}}, 2, {{{1, 1}, {1, 1}}}});
  WriteWholeFile(directory / "a.curves", whole.substr(0, whole.size() - 1));
  EXPECT_THAT(
      MessageOf<formats::FileError>([&] { host::DescribeFile(directory / "a.curves"); }),
      HasSubstr("a.curves: the file ends within the curve's segments: 2 announced, room for "
                "1 (byte 49)"));
}

TEST(DescriptionText, OfCurvesWithoutAnyAndWithWhatIsNotFinite) {
  Json empty = {{"file", "a"}};
  empty.update(host::DescribeCurves({}));
  EXPECT_THAT(host::DescriptionText(empty, "mm"), Contains("  empty: no closed curve"));
  EXPECT_THAT(host::DescriptionText(empty, "mm"), Contains("  box none mm"));
  Curves curves = Nested(1);
  curves.points[2][0] = std::nan("");
  Json damaged = {{"file", "a"}};
  damaged.update(host::DescribeCurves(curves));
  EXPECT_THAT(host::DescriptionText(damaged, "mm"), Contains("  length not finite mm"));
  EXPECT_THAT(host::DescriptionText(damaged, "mm"), Contains("  points that are not finite 1"));
}

TEST(DescriptionText, ListsTheFirstThirtyCurvesOnly) {
  Curves curves = Nested(1);
  const formats::Curve first = curves.curves[0];
  curves.curves.assign(32, first);
  Json d = {{"file", "a"}};
  d.update(host::DescribeCurves(curves));
  const std::vector<std::string> lines = host::DescriptionText(d, "mm");
  EXPECT_THAT(lines[lines.size() - 2], HasSubstr("curve 30: "));
  EXPECT_EQ(lines.back(), "  and 2 more (--json lists them all)");
}

}  // namespace
