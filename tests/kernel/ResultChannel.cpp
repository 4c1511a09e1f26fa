#include "ResultChannel.h"

#include <cstdint>

namespace kernel_test {
namespace {

void* HandleOf(std::size_t count) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(count));
}

std::int32_t NumberOf(void* handle) {
  return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(handle)) - 1;
}

}  // namespace

int ResultChannel::Reset() {
  m_result.mesh = {};
  m_result.events.push_back("Reset");
  ++m_result.resets;
  return 0;
}

void* ResultChannel::AddVertex(const double* xyz) {
  if (m_memory == 0) return nullptr;
  --m_memory;
  m_result.mesh.vertices.push_back({xyz[0], xyz[1], xyz[2]});
  return HandleOf(m_result.mesh.vertices.size());
}

void* ResultChannel::AddTriangle(void* a, void* b, void* c, char colour) {
  if (m_memory == 0) return nullptr;
  --m_memory;
  m_result.mesh.facets.push_back(
      {{NumberOf(a), NumberOf(b), NumberOf(c)}, static_cast<std::uint8_t>(colour)});
  return this;
}

void ResultChannel::Close() {
  m_result.events.push_back("Close after " + std::to_string(m_result.dialog.calls.size()));
  ++m_result.closes;
}

void PlayInto(SurfaceTransfer& channel, const formats::Mesh& mesh) {
  channel.Reset();
  std::vector<void*> handles;
  for (const auto& vertex : mesh.vertices) handles.push_back(channel.AddVertex(vertex.data()));
  for (const formats::Facet& facet : mesh.facets) {
    const auto handle = [&](std::size_t i) {
      return handles[static_cast<std::size_t>(facet.vertices[i])];
    };
    channel.AddTriangle(handle(0), handle(1), handle(2), static_cast<char>(facet.colour));
  }
  channel.Close();
}

}  // namespace kernel_test
