#include <gtest/gtest.h>

#include "formats/FileError.h"
#include "formats/MeshMeasures.h"
#include "host/jobs/Stock.h"

namespace {

TEST(Stock, ABoxIsTwelveOutwardFacets) {
  const formats::Mesh box = host::StockFrom("box:-1,-2,-3,4,5.5,6e0");
  EXPECT_EQ(box.vertices.size(), 8U);
  EXPECT_EQ(box.facets.size(), 12U);
  EXPECT_TRUE(formats::AnalyseTopology(box).IsOrientedManifold());
  const auto measures = formats::MeasureMesh(box);
  EXPECT_DOUBLE_EQ(measures.volume, 5 * 7.5 * 9);
  EXPECT_EQ(measures.box->lower, (std::array<double, 3>{-1, -2, -3}));
  EXPECT_EQ(measures.box->upper, (std::array<double, 3>{4, 5.5, 6}));
}

TEST(Stock, RefusesBoxesThatAreNone) {
  for (const char* box : {"box:", "box:1", "box:0,0,0,1,1", "box:0,0,0,1,1,1,1", "box:0,0,0,1,1,x",
                          "box:0,0,0,1,1,1 ", "box:0,0,0,1,0,1", "box:0,0,0,1,-1,1",
                          "box:0,0,0,1,1,inf", "box:0,0,0,1,1,nan", "box:,0,0,1,1,1"}) {
    EXPECT_THROW(host::StockFrom(box), formats::FileError) << box;
  }
}

TEST(Stock, AFileThatIsNotThereIsAnError) {
  EXPECT_THROW(host::StockFrom("no such file.stl"), formats::FileError);
}

}  // namespace
