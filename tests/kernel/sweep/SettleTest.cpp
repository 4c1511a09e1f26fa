// Places that no ray sees: what runs between the rays comes out within the tolerance all the same.

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "Fits.h"
#include "SweepRun.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

using support::Point;

constexpr double kTolerance = 0.025;
constexpr std::uint8_t kCut = 2;

formats::Mesh Block() { return support::Box({0, 0, 0}, {40, 30, 20}, 1); }

// A raster over the whole block and past it, at heights that vary from place to place.
std::vector<Point> WavyRaster(double stepX, double stepY, double height, double wave) {
  std::vector<Point> tips;
  for (int row = 0; row * stepY <= 30; ++row) {
    const int steps = static_cast<int>(40 / stepX);
    for (int i = 0; i <= steps; ++i) {
      const double x = stepX * (row % 2 == 0 ? i : steps - i);
      const double y = stepY * row;
      tips.push_back({x, y, height + wave * std::sin(x / 4) * std::cos(y / 4)});
    }
  }
  return tips;
}

void ExpectRasterFits(const formats::ConvexTool& tool, const std::vector<Point>& tips) {
  const SweepResult run = RunSweep(Block(), {PathOf(tool, kTolerance, tips)});
  ExpectSound(run.mesh);
  EXPECT_TRUE(run.dialog.warnings.empty());
  support::MovedTools tools(tool.cornerRadius, tool.flatRadius);
  tools.AddCut(tips);
  ExpectFits(run, tools, kCut, kTolerance, {0.3, 0.3, 0.3}, {39.7, 29.7, 19.7});
  for (const auto& vertex : run.mesh.vertices) {
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_GE(vertex[k], -1e-8);
      EXPECT_LE(vertex[k], (Point{40, 30, 20}[k]) + 1e-8);
    }
  }
}

TEST(Settle, CuspsOfABallMeetTheStocksSides) { ExpectRasterFits(Ball(5), WavyRaster(1, 2, 13, 3)); }

TEST(Settle, CuspsOfABullNoseMeetTheStocksSides) {
  ExpectRasterFits(BullNose(5, 1), WavyRaster(2, 4, 13, 2));
}

}  // namespace
}  // namespace sweep_test
