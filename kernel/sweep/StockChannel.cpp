#include "kernel/sweep/StockChannel.h"

#include <array>
#include <cstdint>
#include <new>

namespace kernel {
namespace {

constexpr std::size_t kMostVertices = 0x7FFFFFFF;

// A handle is the vertex number plus one, so that no vertex has the null handle.
void* HandleOf(std::size_t vertex) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(vertex + 1));
}

std::uintptr_t VertexOf(void* handle) { return reinterpret_cast<std::uintptr_t>(handle) - 1; }

}  // namespace

int StockChannel::Reset() {
  m_mesh = StockMesh();
  m_isIncomplete = false;
  return 0;
}

void* StockChannel::AddVertex(const double* xyz) {
  if (m_mesh.vertices.size() >= kMostVertices) return nullptr;
  try {
    m_mesh.vertices.push_back({xyz[0], xyz[1], xyz[2]});
  } catch (const std::bad_alloc&) {
    m_isIncomplete = true;
    return nullptr;
  }
  return HandleOf(m_mesh.vertices.size() - 1);
}

void* StockChannel::AddTriangle(void* a, void* b, void* c, char colour) {
  StockMesh::Facet facet{{}, static_cast<std::uint8_t>(colour)};
  const std::array<void*, 3> handles = {a, b, c};
  for (std::size_t corner = 0; corner < 3; ++corner) {
    const std::uintptr_t vertex = VertexOf(handles[corner]);
    if (vertex >= m_mesh.vertices.size()) return nullptr;
    facet.vertices[corner] = static_cast<std::uint32_t>(vertex);
  }
  try {
    m_mesh.facets.push_back(facet);
  } catch (const std::bad_alloc&) {
    m_isIncomplete = true;
    return nullptr;
  }
  return this;
}

const StockMesh& StockChannel::Mesh() const {
  if (m_isIncomplete) throw std::bad_alloc();
  return m_mesh;
}

}  // namespace kernel
