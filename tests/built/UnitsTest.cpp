// The two figures of the add-in that depend on the host's unit, seen from outside.

#include <gtest/gtest.h>
#include <string>

#include "built/BuiltJobs.h"
#include "built/FaultyHost.h"
#include "built/Workplace.h"
#include "formats/InterchangeFile.h"
#include "host/QZCore/HostControl.h"
#include "host/qzhost/AddIn.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"

namespace {

class UnitsTest : public ::testing::Test {
 protected:
  ~UnitsTest() override { SetHostMetric(true); }

  FaultyHost m_host;
  const host::AddIn m_addIn{BuiltAddIn()};
};

TEST_F(UnitsTest, CompressionInInchesHasTheToolAndTolerancesOfInches) {
  const Workplace place(JobOf("qztutlStockModelCompress"));
  for (const bool metric : {true, false}) {
    SetHostMetric(metric);
    place.Fill();
    EXPECT_EQ(place.Call(m_addIn, &m_host), 1);
    const auto paths =
        formats::ReadInterchangeFile((place.Directory() / "BinaryPaths.tmp").string());
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_EQ(paths[0].sweepToler, metric ? 0.025 : 0.001);
    EXPECT_EQ(paths[0].pathToler, metric ? 0.025 : 0.001);
    EXPECT_EQ(paths[0].compressToler, 0.1);
    EXPECT_EQ(std::get<formats::ConvexTool>(paths[0].tool).flatRadius, metric ? 25.4 : 1.0);
  }
}

// An output without curves is not moved back when the input was, and its stream shows that.
TEST_F(UnitsTest, OutlineThirtyAwayIsMovedToTheOriginInInchesOnly) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory / "in.iff", support::BinarySurfaceBytes({}));
  for (const bool metric : {true, false}) {
    SetHostMetric(metric);
    double min[] = {30, 0, 0};
    double max[] = {40, 1, 1};
    unsigned char result = 77;
    using Operation = void(const char*, int, const char*, double, double*, double*, unsigned char*);
    const std::string output = support::AddinSpelling(directory.Path()) + "out.iff";
    m_addIn.Export<Operation>("qztutlSpinSilBndy")(
        (support::AddinSpelling(directory.Path()) + "in.iff").c_str(), 1, output.c_str(), 0.01, min,
        max, &result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(OpenStreamCount() > 0, !metric) << OpenStreamReport().GetString();
    EXPECT_DOUBLE_EQ(min[0], 30);
    EXPECT_DOUBLE_EQ(max[0], 40);
    CloseStreamsOn(output.c_str());
  }
  EXPECT_EQ(OpenStreamCount(), 0) << OpenStreamReport().GetString();
}

}  // namespace
