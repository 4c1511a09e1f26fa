#include "PlainSurface.h"

#include <memory>
#include <new>

PlainSurfaceXfer::PlainSurfaceXfer(const char* fileName) : m_stream(std::fopen(fileName, "wb")) {
  if (m_stream != nullptr) std::fwrite("binary surface", 1, 14, m_stream);
}

PlainSurfaceXfer::~PlainSurfaceXfer() {
  FreeBlocks();
  if (m_stream != nullptr) std::fclose(m_stream);
}

int PlainSurfaceXfer::Reset() {
  FreeBlocks();
  return 0;
}

void* PlainSurfaceXfer::AddVertex(const double* xyz) {
  if (m_vertices == nullptr || m_vertices->count == kBlockSize) {
    auto* block = new (std::nothrow) VertexBlock;
    if (block == nullptr) return nullptr;
    block->count = 0;
    block->next = m_vertices;
    m_vertices = block;
  }
  double* record = m_vertices->records[m_vertices->count++];
  for (int i = 0; i < 3; ++i) record[i] = xyz[i];
  ++m_vertexCount;
  return record;
}

void* PlainSurfaceXfer::AddTriangle(void* a, void* b, void* c, char colour) {
  if (m_triangles == nullptr || m_triangles->count == kBlockSize) {
    auto* block = new (std::nothrow) TriangleBlock;
    if (block == nullptr) return nullptr;
    block->count = 0;
    block->next = m_triangles;
    m_triangles = block;
  }
  m_triangles->records[m_triangles->count++] = {
      {static_cast<double*>(a), static_cast<double*>(b), static_cast<double*>(c)}, colour};
  ++m_triangleCount;
  return m_triangles;
}

void PlainSurfaceXfer::Close() {
  if (m_stream == nullptr) return;
  std::fwrite(&m_vertexCount, sizeof m_vertexCount, 1, m_stream);
  std::fwrite(&m_triangleCount, sizeof m_triangleCount, 1, m_stream);
  if (WriteVertices()) WriteTriangles();
  std::fclose(m_stream);
  m_stream = nullptr;
  FreeBlocks();
}

bool PlainSurfaceXfer::WriteVertices() {
  double number = 0;
  for (VertexBlock* block = m_vertices; block != nullptr; block = block->next) {
    for (std::int16_t i = 0; i < block->count; ++i) {
      if (std::fwrite(block->records[i], 24, 1, m_stream) != 1) return false;
      block->records[i][0] = ++number;
    }
  }
  return true;
}

bool PlainSurfaceXfer::WriteTriangles() {
  for (TriangleBlock* block = m_triangles; block != nullptr; block = block->next) {
    for (std::int16_t i = 0; i < block->count; ++i) {
      for (const double* corner : block->records[i].corners) {
        const auto number = static_cast<std::int32_t>(*corner);
        if (std::fwrite(&number, sizeof number, 1, m_stream) != 1) return false;
      }
      if (std::fwrite(&block->records[i].colour, 1, 1, m_stream) != 1) return false;
    }
  }
  return true;
}

void PlainSurfaceXfer::FreeBlocks() {
  while (m_vertices != nullptr) {
    VertexBlock* next = m_vertices->next;
    delete m_vertices;
    m_vertices = next;
  }
  while (m_triangles != nullptr) {
    TriangleBlock* next = m_triangles->next;
    delete m_triangles;
    m_triangles = next;
  }
  m_vertexCount = 0;
  m_triangleCount = 0;
}

bool PlainLoadSurface(const char* fileName, SurfaceTransfer* channel) {
  struct CloseFile {
    void operator()(FILE* stream) const { std::fclose(stream); }
  };
  const std::unique_ptr<FILE, CloseFile> stream(std::fopen(fileName, "rb"));
  char header[14];
  std::int32_t vertices = 0;
  std::int32_t triangles = 0;
  if (stream == nullptr || std::fread(header, 14, 1, stream.get()) != 1 ||
      std::fread(&vertices, 4, 1, stream.get()) != 1 ||
      std::fread(&triangles, 4, 1, stream.get()) != 1 || vertices < 1 || triangles < 1) {
    return false;
  }
  const std::unique_ptr<void*[]> handles(new void*[static_cast<std::size_t>(vertices)]);
  channel->Reset();
  for (std::int32_t i = 0; i < vertices; ++i) {
    double xyz[3];
    if (std::fread(xyz, 24, 1, stream.get()) != 1) return false;
    handles[static_cast<std::size_t>(i)] = channel->AddVertex(xyz);
  }
  for (std::int32_t i = 0; i < triangles; ++i) {
    std::int32_t numbers[3];
    char colour = 0;
    if (std::fread(numbers, 12, 1, stream.get()) != 1) return false;
    if (std::fread(&colour, 1, 1, stream.get()) != 1) return false;
    const auto handle = [&](int k) { return handles[static_cast<std::size_t>(numbers[k] - 1)]; };
    channel->AddTriangle(handle(0), handle(1), handle(2), colour);
  }
  channel->Close();
  return true;
}
