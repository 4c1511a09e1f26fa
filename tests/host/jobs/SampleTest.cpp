// The programs in samples/, against what their comments and samples/README.md promise.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <numbers>
#include <sstream>
#include <vector>

#include "formats/programs/GCodeProgram.h"
#include "formats/programs/ProgramPaths.h"
#include "formats/programs/ToolTable.h"

namespace {

const std::string kSamples = std::string(QZ_SOURCE_DIR) + "/samples/";

struct SampleRun {
  std::vector<formats::ProgramPath> paths;
  formats::GCodeReport report;
};

SampleRun RunSample(const std::string& program, const std::string& tools) {
  SampleRun run;
  const auto table = formats::ReadToolTable(kSamples + tools, true);
  formats::ProgramPaths paths(
      table, {}, [&run](formats::ProgramPath path) { run.paths.push_back(std::move(path)); });
  formats::GCodeOptions options;
  options.strict = true;
  options.arcTolerance = 0.001;
  run.report = formats::RunGCodeFile(kSamples + program, options, paths);
  paths.Finish();
  return run;
}

// Height above the tip of a flat or ball cutter at a distance from its axis.
double CutterHeight(const formats::ConvexTool& tool, double distance) {
  const double over = std::max(0.0, distance - tool.flatRadius);
  return tool.cornerRadius -
         std::sqrt(std::max(0.0, tool.cornerRadius * tool.cornerRadius - over * over));
}

// The stock's top as a field of heights over cell centres, lowered by every move in small steps: a
// plain and independent way to the volume that is removed.
class HeightField {
 public:
  HeightField(double width, double depth, double cell)
      : cell_(cell),
        columns_(static_cast<int>(std::lround(width / cell))),
        rows_(static_cast<int>(std::lround(depth / cell))),
        heights_(static_cast<std::size_t>(columns_ * rows_), 0.0) {}

  void Cut(const formats::ConvexTool& tool, const std::vector<double>& positions) {
    for (std::size_t i = 0; i + 3 < positions.size(); i += 3) {
      const double length =
          std::hypot(positions[i + 3] - positions[i], positions[i + 4] - positions[i + 1]);
      const int steps = std::max(1, static_cast<int>(std::ceil(length / (cell_ / 2))));
      for (int step = 0; step <= steps; ++step) {
        const double t = static_cast<double>(step) / steps;
        Stand(tool, positions[i] + t * (positions[i + 3] - positions[i]),
              positions[i + 1] + t * (positions[i + 4] - positions[i + 1]),
              positions[i + 2] + t * (positions[i + 5] - positions[i + 2]));
      }
    }
  }

  double Removed() const {
    double sum = 0;
    for (const double height : heights_) sum -= height;
    return sum * cell_ * cell_;
  }

 private:
  void Stand(const formats::ConvexTool& tool, double x, double y, double z) {
    if (z >= 0) return;
    const double radius = tool.cornerRadius + tool.flatRadius;
    const int left = std::max(0, static_cast<int>((x - radius) / cell_));
    const int right = std::min(columns_ - 1, static_cast<int>((x + radius) / cell_));
    const int low = std::max(0, static_cast<int>((y - radius) / cell_));
    const int high = std::min(rows_ - 1, static_cast<int>((y + radius) / cell_));
    for (int row = low; row <= high; ++row) {
      for (int column = left; column <= right; ++column) {
        const double distance = std::hypot((column + 0.5) * cell_ - x, (row + 0.5) * cell_ - y);
        if (distance > radius) continue;
        double& height = heights_[static_cast<std::size_t>(row * columns_ + column)];
        height = std::min(height, z + CutterHeight(tool, distance));
      }
    }
  }

  double cell_;
  int columns_;
  int rows_;
  std::vector<double> heights_;
};

// samples/README.md derives this number.
double RemovedByTwoTools() {
  const double pi = std::numbers::pi;
  const double slot = 6 * (300 + 25 * pi);
  const double halfRing = 5 * 175 * pi;
  const double quarterRing = 2 * 75 * pi;
  const double hole = 640 * pi;
  const double groove = 30 * (16 * std::acos(0.25) - std::sqrt(15.0)) + 27 * pi;
  const double holes = 2 * (128.0 / 3 + 80) * pi + (128.0 / 3 + 128) * pi;
  const double edge = 120 * 5 * 4;
  return slot + halfRing + quarterRing + hole + groove + holes + edge;
}

TEST(Samples, TwoToolsMakesThreePaths) {
  const SampleRun run = RunSample("two-tools.ngc", "tools-two.json");
  ASSERT_EQ(run.paths.size(), 3U);
  EXPECT_EQ(run.paths[0].tool, 1);
  EXPECT_EQ(run.paths[1].tool, 2);
  EXPECT_EQ(run.paths[2].tool, 1);
  EXPECT_EQ(run.report.arcs, 4);
  EXPECT_EQ(run.report.holes, 3);
  const auto& last = run.paths[2].record.cuts[0].coordinates;
  EXPECT_EQ(std::vector<double>(last.begin(), last.begin() + 3),
            (std::vector<double>{-10, 80, -4}));
}

TEST(Samples, TwoToolsRemovesTheVolumeOfItsClosedForm) {
  const SampleRun run = RunSample("two-tools.ngc", "tools-two.json");
  HeightField stock(120, 80, 0.1);
  for (const auto& path : run.paths) {
    stock.Cut(std::get<formats::ConvexTool>(path.record.tool), path.record.cuts[0].coordinates);
  }
  EXPECT_NEAR(RemovedByTwoTools(), 11810.2224, 1e-4);
  EXPECT_NEAR(stock.Removed(), RemovedByTwoTools(), 0.002 * RemovedByTwoTools());
}

TEST(Samples, ReliefFollowsItsFormulaOverTheWholeBlock) {
  const SampleRun run = RunSample("relief.ngc", "tools-demo.json");
  ASSERT_EQ(run.paths.size(), 1U);
  const auto& positions = run.paths[0].record.cuts[0].coordinates;
  ASSERT_EQ(positions.size(), 3U * (51 * 51 + 2));
  std::size_t next = 3;
  for (int row = 0; row < 51; ++row) {
    for (int i = 0; i < 51; ++i, next += 3) {
      const double x = row % 2 == 0 ? -50 + 2 * i : 50 - 2 * i;
      const double y = -50 + 2 * row;
      const double r = std::sqrt(x * x + y * y);
      EXPECT_EQ(positions[next], x);
      EXPECT_EQ(positions[next + 1], y);
      EXPECT_NEAR(positions[next + 2], 6 * std::cos(6.4 * r * std::numbers::pi / 180) - 8, 1e-12);
    }
  }
}

// The real program that scripts/fetch-samples.sh fetches.
TEST(Samples, RealProgramIsUnderstoodToTheLastWord) {
  const char* programs = std::getenv("QZ_PROGRAMS");
  const std::string path = std::string(programs == nullptr ? "" : programs) + "/3D_Chips.ngc";
  if (!std::filesystem::exists(path)) {
    GTEST_SKIP() << "QZ_PROGRAMS names no directory with 3D_Chips.ngc; without a package server it "
                    "cannot be fetched";
  }
  const auto table = formats::ReadToolTable(kSamples + "tools-demo.json", true);
  std::vector<formats::ProgramPath> paths;
  formats::ProgramPaths gather(
      table, {}, [&paths](formats::ProgramPath each) { paths.push_back(std::move(each)); });
  formats::GCodeOptions options;
  options.strict = true;
  const auto report = formats::RunGCodeFile(path, options, gather);
  gather.Finish();
  EXPECT_EQ(paths.size(), 1U);
  EXPECT_EQ(report.rapids, 2);
  EXPECT_EQ(report.feeds, 4681);
  EXPECT_EQ(report.low, (formats::ToolTip{-52, -56.128, -30.5}));
  EXPECT_EQ(report.high, (formats::ToolTip{53, 56.128, 10}));
}

}  // namespace
