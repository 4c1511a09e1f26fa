#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "RecordingDialog.h"
#include "formats/Mesh.h"
#include "stock/SurfaceTransfer.h"

namespace kernel_test {

/// What a run of IFSweep left in its output channel.
struct SweepResult {
  formats::Mesh mesh;
  int resets = 0, closes = 0;
  bool stopped = false;             // the dialog threw
  std::vector<std::string> events;  // the channel's calls without the vertices and triangles
  RecordingDialog dialog;
};

/// Takes a result; `memory` says how many vertices and triangles, before there is no memory.
class ResultChannel final : public SurfaceTransfer {
 public:
  ResultChannel(SweepResult& result, std::size_t memory) : m_result(result), m_memory(memory) {}

  int Reset() override;
  void* AddVertex(const double* xyz) override;
  void* AddTriangle(void* a, void* b, void* c, char colour) override;
  void Close() override;

 private:
  SweepResult& m_result;
  std::size_t m_memory;
};

/// Plays a mesh into an input channel, from Reset to Close.
void PlayInto(SurfaceTransfer& channel, const formats::Mesh& mesh);

}  // namespace kernel_test
