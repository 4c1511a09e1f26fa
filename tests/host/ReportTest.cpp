#include <gtest/gtest.h>

#include "host/qzhost/Report.h"

namespace {

TEST(Report, BeginsWithTheUnits) {
  host::Options options;
  EXPECT_EQ(host::Report(options).Text(), "units  mm\n");
  options.units = host::Units::kInches;
  EXPECT_EQ(host::Report(options).Text(), "units  inch\n");
  EXPECT_EQ(host::Report(options).Object()["units"], "inch");
}

TEST(Report, ValuesStandBelowEachOther) {
  host::Report report((host::Options()));
  report.Add("facets_in", 12, "facets in");
  report.Add("seconds", 0.25, "seconds", "0.250");
  report.Add("hidden", true);
  report.AddLine("a line");
  EXPECT_EQ(report.Text(),
            "units      mm\n"
            "facets in  12\n"
            "seconds    0.250\n"
            "a line\n");
  EXPECT_EQ(report.Object().dump(),
            "{\"units\":\"mm\",\"facets_in\":12,\"seconds\":0.25,\"hidden\":true}");
}

TEST(Fixed, RoundsToItsDecimals) {
  EXPECT_EQ(host::Fixed(1234.5678, 2), "1234.57");
  EXPECT_EQ(host::Fixed(-0.5, 0), "-0");
  EXPECT_EQ(host::Fixed(1e300, 0).size(), 301U);
}

}  // namespace
