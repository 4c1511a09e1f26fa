#include "support/RecordingChannel.h"

#include <cstdint>

#include "callbacks/UIDialog.h"

namespace support {
namespace {

void* HandleOf(std::size_t number) { return reinterpret_cast<void*>(number); }

std::int32_t NumberOf(void* handle) {
  return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

bool Fails(int from, std::size_t number) {
  return from > 0 && number >= static_cast<std::size_t>(from);
}

// What a kernel does when the channel has no memory left.
void GiveUp(UIDialog& callbacks) { callbacks.ErrorMessage("The output has no memory.", true); }

}  // namespace

int RecordingChannel::Reset() {
  Enter("Reset", "");
  m_received = {};
  return 0;
}

void* RecordingChannel::AddVertex(const double* xyz) {
  const std::size_t number = m_received.vertices.size() + 1;
  Enter("AddVertex", std::to_string(number));
  m_received.vertices.push_back({xyz[0], xyz[1], xyz[2]});
  const bool fails = Fails(CurrentScriptedKernel().vertexHandlesFailFrom, number);
  return fails ? nullptr : HandleOf(number);
}

void* RecordingChannel::AddTriangle(void* a, void* b, void* c, char colour) {
  const std::size_t number = m_received.facets.size() + 1;
  Enter("AddTriangle", std::to_string(number));
  m_received.facets.push_back(
      {{NumberOf(a), NumberOf(b), NumberOf(c)}, static_cast<unsigned char>(colour)});
  const bool fails = Fails(CurrentScriptedKernel().triangleHandlesFailFrom, number);
  return fails ? nullptr : HandleOf(number);
}

void RecordingChannel::Close() { Enter("Close", ""); }

void RecordingChannel::Enter(const std::string& operation, const std::string& detail) {
  CurrentScriptedKernel().Enter(m_name + "." + operation, detail, m_callbacks);
}

void PlayInto(SurfaceTransfer& output, const Surface& surface, bool close, UIDialog& callbacks) {
  ScriptedKernel& kernel = CurrentScriptedKernel();
  kernel.Enter("output.Reset", "", callbacks);
  output.Reset();
  std::vector<void*> handles;
  for (const auto& vertex : surface.vertices) {
    kernel.Enter("output.AddVertex", std::to_string(handles.size() + 1), callbacks);
    handles.push_back(output.AddVertex(vertex.data()));
    if (handles.back() == nullptr) return GiveUp(callbacks);
  }
  int triangle = 0;
  for (const auto& facet : surface.facets) {
    kernel.Enter("output.AddTriangle", std::to_string(++triangle), callbacks);
    const auto handle = [&](int corner) {
      return handles.at(
          static_cast<std::size_t>(facet.numbers.at(static_cast<std::size_t>(corner))) - 1);
    };
    void* taken =
        output.AddTriangle(handle(0), handle(1), handle(2), static_cast<char>(facet.colour));
    if (taken == nullptr) return GiveUp(callbacks);
  }
  if (!close) return;
  kernel.Enter("output.Close", "", callbacks);
  output.Close();
}

}  // namespace support
