#pragma once

#include <array>
#include <string>
#include <vector>

#include "callbacks/UIDialog.h"
#include "formats/Mesh.h"
#include "formats/ToolpathRecords.h"

namespace sweep_test {

/// Records every callback as one line; throws Stop at call number `throwAt` (counted from 1), or at
/// the first warning. Where that does not come, Stop ends the run as the stock's rays are to be
/// made.
class RecordingDialog : public UIDialog {
 public:
  struct Stop {};

  void CreateWait(const char* message) override { Add(std::string("wait ") + message); }
  void UpdateWait(const char* message) override { Add(std::string("wait ") + message); }
  void EndWait() override { Add("end wait"); }
  void CreateProgress(const char* message, int total) override;
  void ResetWait(const char* message, int) override { Add(std::string("reset ") + message); }
  void UpdateProgress(const char* message) override { Add(std::string("update ") + message); }
  void SetProgress(int count) override { Add("count " + std::to_string(count)); }
  void EndProgress() override { Add("end"); }
  void ErrorMessage(const char* message, bool fatal) override;

  int throwAt = 0;
  bool throwAtWarning = false;
  std::vector<std::string> calls;
  std::vector<int> percentages;
  std::vector<std::string> warnings, errors;

 private:
  void Add(const std::string& line);
};

/// What a run left in its output channel.
struct SweepResult {
  formats::Mesh mesh;
  int resets = 0, closes = 0;
  bool stopped = false;             // the dialog threw
  std::vector<std::string> events;  // the channel's calls without the vertices and triangles
  RecordingDialog dialog;
};

/// One run of IFSweep over an interchange file of the records. `channelMemory`: how many vertices
/// and triangles the output takes before it has no memory.
SweepResult RunSweep(const formats::Mesh& stock, const std::vector<formats::PathRecord>& records,
                     int throwAt = 0, std::size_t channelMemory = SIZE_MAX);

/// The same, stopped by the first warning, before what it warns of is done.
SweepResult RunSweepUntilWarning(const formats::Mesh& stock,
                                 const std::vector<formats::PathRecord>& records);

/// The same with a file of the given bytes.
SweepResult RunSweepOnBytes(const formats::Mesh& stock, const std::string& bytes);

/// Tips are the cut's positions.
formats::PathRecord PathOf(const formats::ConvexTool& tool, double tolerance,
                           const std::vector<std::array<double, 3>>& tips, int colour = 2);

formats::ConvexTool Ball(double radius);
formats::ConvexTool Flat(double radius);
formats::ConvexTool BullNose(double radius, double corner);

/// Fails the test when the mesh is not closed, edge-manifold and outward, or has a facet of no
/// area.
void ExpectSound(const formats::Mesh& mesh);

}  // namespace sweep_test
