#pragma once

#include <string>

#include "stock/SurfaceTransfer.h"
#include "support/ScriptedKernel.h"

namespace support {

/// An input channel of the scripted kernel. Handles are the numbers of what was taken.
class RecordingChannel final : public SurfaceTransfer {
 public:
  /// `name` stands before the operation in the events; `received` takes what arrives.
  RecordingChannel(std::string name, UIDialog& callbacks, Surface& received)
      : m_name(std::move(name)), m_callbacks(callbacks), m_received(received) {}

  int Reset() override;
  void* AddVertex(const double* xyz) override;
  void* AddTriangle(void* a, void* b, void* c, char colour) override;
  void Close() override;

  const std::string& Name() const { return m_name; }

 private:
  void Enter(const std::string& operation, const std::string& detail);

  std::string m_name;
  UIDialog& m_callbacks;
  Surface& m_received;
};

/// Plays a surface into a channel as a kernel does: Reset, vertices, triangles and, when wanted,
/// Close; each is a numbered call of the scripted kernel. A channel without memory is a fatal
/// error.
void PlayInto(SurfaceTransfer& output, const Surface& surface, bool close, UIDialog& callbacks);

}  // namespace support
