#include "SweepRun.h"

#include <gtest/gtest.h>

#include "formats/InterchangeFile.h"
#include "platform/IFSweep.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

void RunOnFile(const formats::Mesh& stock, std::string path, std::size_t channelMemory,
               SweepResult& result) {
  kernel_test::ResultChannel output(result, channelMemory);
  IFSweep sweep(&result.dialog);
  kernel_test::PlayInto(*sweep.OpenStockChannel(), stock);
  try {
    sweep.Run(&output, path.data());
  } catch (const RecordingDialog::Stop&) {
    result.stopped = true;
  }
}

void RunOnRecords(const formats::Mesh& stock, const std::vector<formats::PathRecord>& records,
                  std::size_t channelMemory, SweepResult& result) {
  const support::TempDirectory directory;
  formats::WriteInterchangeFile(directory / "paths.tmp", records);
  RunOnFile(stock, directory / "paths.tmp", channelMemory, result);
}

}  // namespace

SweepResult RunSweep(const formats::Mesh& stock, const std::vector<formats::PathRecord>& records,
                     int throwAt, std::size_t channelMemory) {
  SweepResult result;
  result.dialog.throwAt = throwAt;
  RunOnRecords(stock, records, channelMemory, result);
  return result;
}

SweepResult RunSweepUntilWarning(const formats::Mesh& stock,
                                 const std::vector<formats::PathRecord>& records) {
  SweepResult result;
  result.dialog.throwAtWarning = true;
  RunOnRecords(stock, records, SIZE_MAX, result);
  return result;
}

SweepResult RunSweepOnBytes(const formats::Mesh& stock, const std::string& bytes) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory / "paths.tmp", bytes);
  SweepResult result;
  RunOnFile(stock, directory / "paths.tmp", SIZE_MAX, result);
  return result;
}

formats::PathRecord PathOf(const formats::ConvexTool& tool, double tolerance,
                           const std::vector<std::array<double, 3>>& tips, int colour) {
  formats::PathRecord record;
  record.colour = colour;
  record.sweepToler = tolerance;
  record.tool = tool;
  record.cuts.emplace_back();
  for (const auto& tip : tips) {
    record.cuts.back().coordinates.insert(record.cuts.back().coordinates.end(), tip.begin(),
                                          tip.end());
  }
  return record;
}

formats::ConvexTool Ball(double radius) { return {radius, 0, 0, 90, 0, 0}; }
formats::ConvexTool Flat(double radius) { return {0, radius, 0, 90, 0, 0}; }
formats::ConvexTool BullNose(double radius, double corner) {
  return {corner, radius - corner, 0, 90, 0, 0};
}

void ExpectSound(const formats::Mesh& mesh) {
  EXPECT_EQ(support::ClosedFault(mesh), "");
  EXPECT_EQ(support::ZeroAreaFault(mesh), "");
  EXPECT_EQ(support::VertexFault(mesh), "");
  if (!mesh.facets.empty()) {
    EXPECT_GT(support::Volume(mesh), 0);
  }
}

}  // namespace sweep_test
