// The exports of the outlines and the offset.

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "addin/exports.h"
#include "callbacks/UIDialog.h"
#include "support/CurveFile.h"
#include "support/JobFiles.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

namespace {

using ::testing::ElementsAre;

// Spelled once more for the caller's side: each export must be callable through exactly this type.
using SilhouetteOperation = void(char*, char*, double, double*, double*, unsigned char*);
using SpinOperation = void(const char*, int, const char*, double, double*, double*, unsigned char*);
using OffsetOperation = void(const char*, const char*, double, double, double*, double*,
                             unsigned char*);

class OutlineExportsTest : public support::JobTest {
 protected:
  OutlineExportsTest() {
    kernel.outline = support::Square(8);
    kernel.result = support::OneFacet(3, 9);
    support::WriteWholeFile(InJob("in.iff"), support::BinarySurfaceBytes(support::OneFacet(4, 7)));
  }

  void Silhouette() {
    SilhouetteOperation* const operation = qztutl_silbndy;
    operation(input.data(), output.data(), 0.25, boxMin.data(), boxMax.data(), &result);
  }
  void Spin(int mode) {
    SpinOperation* const operation = qztutlSpinSilBndy;
    operation(input.c_str(), mode, output.c_str(), 0.5, boxMin.data(), boxMax.data(), &result);
  }
  void Offset() {
    OffsetOperation* const operation = qztutlSphericalOffsetTris;
    operation(input.c_str(), output.c_str(), 0.75, 15.0, boxMin.data(), boxMax.data(), &result);
  }
  std::string OutputBytes() const { return support::ReadWholeFile(InJob("out.tmp")); }

  support::ScriptedKernel kernel;
  std::string input = std::string(WorkDir().GetString()) + "in.iff";
  std::string output = std::string(WorkDir().GetString()) + "out.tmp";
  std::array<double, 3> boxMin = {-1, -2, -3};
  std::array<double, 3> boxMax = {5, 6, 7};
  unsigned char result = 0;
};

TEST_F(OutlineExportsTest, SilhouettePassesEverythingOnAndAnswersWithTheResult) {
  Silhouette();
  EXPECT_EQ(result, 1);
  EXPECT_EQ(kernel.distance, 0.25);
  EXPECT_THAT(host.events.Only({"silhouette.Run job"}),
              ElementsAre("silhouette.Run job\\in.iff job\\out.tmp"));
}

TEST_F(OutlineExportsTest, SpunSilhouettePassesEverythingOnAndAnswersWithTheResult) {
  for (const int mode : {0, 1}) {
    result = 0;
    Spin(mode);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(kernel.distance, 0.5);
    EXPECT_EQ(OutputBytes(),
              support::CurveFileBytes(
                  {mode, kernel.outline.points, 4, {{{4, 1}, {1, 2}, {2, 3}, {3, 4}}}}));
  }
}

TEST_F(OutlineExportsTest, OffsetPassesEverythingOnAndAnswersWithTheResult) {
  Offset();
  EXPECT_EQ(result, 1);
  EXPECT_EQ(kernel.distance, 0.75);
  EXPECT_EQ(kernel.unscaledValue, 15.0);
  EXPECT_EQ(OutputBytes(), support::BinarySurfaceBytes(kernel.result));
}

TEST_F(OutlineExportsTest, BoxIsMovedDuringTheRunAndComesBack) {
  boxMin = {1024, 0, 0};
  boxMax = {1026, 2, 2};
  std::array<double, 3> during{};
  for (const char* call : {"silhouette.Run", "spinsil.Run", "sphoffset.Run"}) {
    kernel.At(call, [&](UIDialog&) { during = boxMin; });
  }
  Silhouette();
  EXPECT_THAT(during, ElementsAre(-1.5, -1.1, -1));
  EXPECT_DOUBLE_EQ(boxMin[0], 1024);
  Spin(0);
  EXPECT_THAT(during, ElementsAre(-1.5, 0, 0));
  Offset();
  EXPECT_DOUBLE_EQ(during[0], -1.5);
  EXPECT_DOUBLE_EQ(boxMax[0], 1026);
  EXPECT_DOUBLE_EQ(boxMax[1], 2);
}

TEST_F(OutlineExportsTest, OnesThatFailAreZero) {
  std::filesystem::remove(InJob("in.iff"));
  result = 1;
  Spin(0);
  EXPECT_EQ(result, 0);
  result = 1;
  Offset();
  EXPECT_EQ(result, 0);
  result = 1;
  host.escapePressed = true;
  kernel.At("silhouette.Run", support::ScriptedKernel::Progress("Scanning", 10));
  Silhouette();
  EXPECT_EQ(result, 0);
}

TEST_F(OutlineExportsTest, ExceptionThatPassesThroughLeavesZero) {
  for (const char* call : {"silhouette.Run", "spinsil.Run", "sphoffset.Run"}) {
    kernel.At(call, support::ScriptedKernel::Foreign());
  }
  result = 1;
  EXPECT_THROW(Silhouette(), std::runtime_error);
  EXPECT_EQ(result, 0);
  result = 1;
  EXPECT_THROW(Spin(0), std::runtime_error);
  EXPECT_EQ(result, 0);
  result = 1;
  EXPECT_THROW(Offset(), std::runtime_error);
  EXPECT_EQ(result, 0);
}

}  // namespace
