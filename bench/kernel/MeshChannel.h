#pragma once

#include <cstdint>
#include <vector>

#include "formats/Mesh.h"
#include "stock/SurfaceTransfer.h"

/// Takes a result.
class MeshChannel final : public SurfaceTransfer {
 public:
  int Reset() override {
    mesh = {};
    return 0;
  }
  void* AddVertex(const double* xyz) override {
    mesh.vertices.push_back({xyz[0], xyz[1], xyz[2]});
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(mesh.vertices.size()));
  }
  void* AddTriangle(void* a, void* b, void* c, char colour) override {
    mesh.facets.push_back({{Number(a), Number(b), Number(c)}, static_cast<std::uint8_t>(colour)});
    return this;
  }
  void Close() override {}

  formats::Mesh mesh;

 private:
  static std::int32_t Number(void* handle) {
    return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(handle)) - 1;
  }
};

/// Plays a mesh into an input channel.
inline void Play(const formats::Mesh& mesh, SurfaceTransfer& channel) {
  std::vector<void*> handles;
  handles.reserve(mesh.vertices.size());
  for (const auto& vertex : mesh.vertices) handles.push_back(channel.AddVertex(vertex.data()));
  for (const formats::Facet& facet : mesh.facets) {
    const auto at = [&](std::size_t i) {
      return handles[static_cast<std::size_t>(facet.vertices[i])];
    };
    channel.AddTriangle(at(0), at(1), at(2), static_cast<char>(facet.colour));
  }
  channel.Close();
}
