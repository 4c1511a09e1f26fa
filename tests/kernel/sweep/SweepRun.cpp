#include "SweepRun.h"

#include <gtest/gtest.h>

#include "formats/InterchangeFile.h"
#include "platform/IFSweep.h"
#include "stock/SurfaceTransfer.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

class ResultChannel final : public SurfaceTransfer {
 public:
  ResultChannel(SweepResult& result, std::size_t memory) : m_result(result), m_memory(memory) {}

  int Reset() override {
    m_result.mesh = {};
    m_result.events.push_back("Reset");
    ++m_result.resets;
    return 0;
  }
  void* AddVertex(const double* xyz) override {
    if (m_memory == 0) return nullptr;
    --m_memory;
    m_result.mesh.vertices.push_back({xyz[0], xyz[1], xyz[2]});
    return Handle(m_result.mesh.vertices.size());
  }
  void* AddTriangle(void* a, void* b, void* c, char colour) override {
    if (m_memory == 0) return nullptr;
    --m_memory;
    m_result.mesh.facets.push_back(
        {{Number(a), Number(b), Number(c)}, static_cast<std::uint8_t>(colour)});
    return this;
  }
  void Close() override {
    m_result.events.push_back("Close after " + std::to_string(m_result.dialog.calls.size()));
    ++m_result.closes;
  }

 private:
  static void* Handle(std::size_t count) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(count));
  }
  static std::int32_t Number(void* handle) {
    return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(handle)) - 1;
  }

  SweepResult& m_result;
  std::size_t m_memory;
};

void PlayStock(const formats::Mesh& stock, SurfaceTransfer& channel) {
  channel.Reset();
  std::vector<void*> handles;
  for (const auto& vertex : stock.vertices) handles.push_back(channel.AddVertex(vertex.data()));
  for (const formats::Facet& facet : stock.facets) {
    channel.AddTriangle(handles[static_cast<std::size_t>(facet.vertices[0])],
                        handles[static_cast<std::size_t>(facet.vertices[1])],
                        handles[static_cast<std::size_t>(facet.vertices[2])],
                        static_cast<char>(facet.colour));
  }
  channel.Close();
}

void RunOnFile(const formats::Mesh& stock, std::string path, std::size_t channelMemory,
               SweepResult& result) {
  ResultChannel output(result, channelMemory);
  IFSweep sweep(&result.dialog);
  PlayStock(stock, *sweep.OpenStockChannel());
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

void RecordingDialog::Add(const std::string& line) {
  calls.push_back(line);
  if (static_cast<int>(calls.size()) == throwAt) throw Stop();
  if (throwAtWarning && line == "progress Initialising stock") throw Stop();
}

void RecordingDialog::CreateProgress(const char* message, int total) {
  percentages.push_back(total);
  Add("progress " + std::string(message));
}

void RecordingDialog::ErrorMessage(const char* message, bool fatal) {
  (fatal ? errors : warnings).push_back(message);
  Add(std::string(fatal ? "error " : "warning ") + message);
  if (throwAtWarning && !fatal) throw Stop();
}

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
