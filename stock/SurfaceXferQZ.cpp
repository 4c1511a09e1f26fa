#include "stock/SurfaceXferQZ.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>

#include "blocks/BlockWriter.h"
#include "platform/QZCore.h"
#include "platform/files.h"

namespace {

constexpr char kSourceUnit[] = "SurfaceXferQZ";
constexpr char kHeader[] = "binary surface";
constexpr std::size_t kHeaderSize = sizeof kHeader - 1;
constexpr std::int16_t kBlockSize = 500;
constexpr std::size_t kTriangleSize = 3 * sizeof(std::int32_t) + 1;
static_assert(kBlockSize * kTriangleSize <= BlockWriter::kMostRoom);

struct Vertex {
  // While the file is written, `x` is replaced by the vertex's number in it, so that triangles find
  // the number without a table.
  double x, y, z;
};

// Makes room in the head block of the list, in a new head block when it is full; false when there
// is no memory for one.
template <class Block>
bool HaveRoom(Block** head) {
  if (*head != nullptr && (*head)->count != kBlockSize) return true;
  Block* block = new (std::nothrow) Block;
  if (block == nullptr) return false;
  block->count = 0;
  block->older = *head;
  *head = block;
  return true;
}

// Oldest first: freed from the other end, an allocator that gives memory back as its upper end
// becomes free would do so block by block.
template <class Block>
void FreeList(Block** head) {
  Block* oldestFirst = nullptr;
  while (*head != nullptr) {
    Block* block = *head;
    *head = block->older;
    block->older = oldestFirst;
    oldestFirst = block;
  }
  while (oldestFirst != nullptr) {
    Block* next = oldestFirst->older;
    delete oldestFirst;
    oldestFirst = next;
  }
}

template <class Block>
bool WriteVertices(Block* newest, BlockWriter* out) {
  double number = 0;
  for (Block* block = newest; block != nullptr; block = block->older) {
    const std::size_t size = static_cast<std::size_t>(block->count) * sizeof(Vertex);
    if (!out->Write(block->vertices, size)) return false;
    for (std::int16_t i = 0; i < block->count; ++i) block->vertices[i].x = ++number;
  }
  return true;
}

// False for a corner without a vertex: a producer that ran out of memory may have passed on
// AddVertex's null.
bool PutNumber(const Vertex* corner, unsigned char* to) {
  if (corner == nullptr) return false;
  const auto number = static_cast<std::int32_t>(corner->x);
  std::memcpy(to, &number, sizeof number);
  return true;
}

template <class Block>
bool WriteTriangles(const Block* newest, BlockWriter* out) {
  for (const Block* block = newest; block != nullptr; block = block->older) {
    const std::size_t size = static_cast<std::size_t>(block->count) * kTriangleSize;
    unsigned char* record = out->Room(size);
    if (record == nullptr) return false;
    for (std::int16_t i = 0; i < block->count; ++i, record += kTriangleSize) {
      const auto& corners = block->corners[i];
      if (!PutNumber(corners[0], record) || !PutNumber(corners[1], record + 4) ||
          !PutNumber(corners[2], record + 8)) {
        return false;
      }
      std::memcpy(record + 12, &block->colours[i], 1);
    }
    out->Advance(size);
  }
  return true;
}

}  // namespace

struct SurfaceXferQZ::VertexBlock {
  Vertex vertices[kBlockSize];
  std::int16_t count;
  VertexBlock* older;
};

// Corners and colours apart: together each record would be padded by seven bytes.
struct SurfaceXferQZ::TriangleBlock {
  const Vertex* corners[kBlockSize][3];
  char colours[kBlockSize];
  std::int16_t count;
  TriangleBlock* older;
};

SurfaceXferQZ::SurfaceXferQZ(const char* fileName)
    : m_vertices(nullptr), m_triangles(nullptr), m_vertexCount(0), m_triangleCount(0) {
  const std::size_t length = std::min(std::strlen(fileName), sizeof m_fileName - 1);
  std::memcpy(m_fileName, fileName, length);
  m_fileName[length] = '\0';
  m_stream = m_fopen(kSourceUnit, __LINE__, m_fileName, "wb");
  if (m_stream == nullptr) return;
  if (std::fwrite(kHeader, 1, kHeaderSize, m_stream) != kHeaderSize) {
    // Without a stream Close takes the file for one that could not be created, and removes it.
    m_fclose(kSourceUnit, __LINE__, m_stream);
    m_stream = nullptr;
  }
}

SurfaceXferQZ::~SurfaceXferQZ() {
  FreeBlocks();
  if (m_stream != nullptr) m_fclose(kSourceUnit, __LINE__, m_stream);
  m_stream = nullptr;
}

int SurfaceXferQZ::Reset() {
  FreeBlocks();
  return 0;
}

void* SurfaceXferQZ::AddVertex(const double* xyz) {
  if (!HaveRoom(&m_vertices)) return nullptr;
  Vertex* vertex = &m_vertices->vertices[m_vertices->count++];
  *vertex = {xyz[0], xyz[1], xyz[2]};
  ++m_vertexCount;
  return vertex;
}

void* SurfaceXferQZ::AddTriangle(void* a, void* b, void* c, char colour) {
  if (!HaveRoom(&m_triangles)) return nullptr;
  const std::int16_t i = m_triangles->count++;
  const Vertex** corners = m_triangles->corners[i];
  corners[0] = static_cast<Vertex*>(a);
  corners[1] = static_cast<Vertex*>(b);
  corners[2] = static_cast<Vertex*>(c);
  m_triangles->colours[i] = colour;
  ++m_triangleCount;
  return m_triangles;
}

void SurfaceXferQZ::Close() {
  const bool written = m_stream != nullptr && WriteBody();
  if (m_stream != nullptr) m_fclose(kSourceUnit, __LINE__, m_stream);
  m_stream = nullptr;
  if (!written) RemoveStdFile(m_fileName);
  FreeBlocks();
}

bool SurfaceXferQZ::WriteBody() {
  BlockWriter out(m_stream);
  return out.Write(m_vertexCount) && out.Write(m_triangleCount) &&
         WriteVertices(m_vertices, &out) && WriteTriangles(m_triangles, &out) && out.Flush();
}

void SurfaceXferQZ::FreeBlocks() {
  FreeList(&m_vertices);
  FreeList(&m_triangles);
  m_vertexCount = 0;
  m_triangleCount = 0;
}
