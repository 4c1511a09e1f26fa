#include "stock/SurfaceXferQZ.h"

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

struct Vertex {
  // While the file is written, `x` is replaced by the vertex's number in it, so that triangles find
  // the number without a table.
  double x, y, z;
};

struct Triangle {
  const Vertex* corners[3];
  char colour;
};

// The next free record of the list; null when there is no memory for a further block.
template <class Block>
auto* NextRecord(Block** head) {
  using Record = decltype(&(*head)->records[0]);
  if (*head == nullptr || (*head)->count == kBlockSize) {
    Block* block = new (std::nothrow) Block;
    if (block == nullptr) return Record{nullptr};
    block->count = 0;
    block->older = *head;
    *head = block;
  }
  return &(*head)->records[(*head)->count++];
}

template <class Block>
void FreeList(Block** head) {
  while (*head != nullptr) {
    Block* older = (*head)->older;
    delete *head;
    *head = older;
  }
}

template <class Block>
bool WriteVertices(Block* newest, BlockWriter* out) {
  double number = 0;
  for (Block* block = newest; block != nullptr; block = block->older) {
    for (std::int16_t i = 0; i < block->count; ++i) {
      Vertex& vertex = block->records[i];
      unsigned char* room = out->Room(sizeof vertex);
      if (room == nullptr) return false;
      std::memcpy(room, &vertex, sizeof vertex);
      out->Advance(sizeof vertex);
      vertex.x = ++number;
    }
  }
  return true;
}

bool WriteTriangle(const Triangle& triangle, BlockWriter* out) {
  constexpr std::size_t kSize = 3 * sizeof(std::int32_t) + 1;
  unsigned char* room = out->Room(kSize);
  if (room == nullptr) return false;
  for (const Vertex* corner : triangle.corners) {
    // A producer that ran out of memory may have passed on AddVertex's null.
    if (corner == nullptr) return false;
    const auto number = static_cast<std::int32_t>(corner->x);
    std::memcpy(room, &number, sizeof number);
    room += sizeof number;
  }
  std::memcpy(room, &triangle.colour, 1);
  out->Advance(kSize);
  return true;
}

template <class Block>
bool WriteTriangles(const Block* newest, BlockWriter* out) {
  for (const Block* block = newest; block != nullptr; block = block->older) {
    for (std::int16_t i = 0; i < block->count; ++i) {
      if (!WriteTriangle(block->records[i], out)) return false;
    }
  }
  return true;
}

}  // namespace

struct SurfaceXferQZ::VertexBlock {
  Vertex records[kBlockSize];
  std::int16_t count;
  VertexBlock* older;
};

struct SurfaceXferQZ::TriangleBlock {
  Triangle records[kBlockSize];
  std::int16_t count;
  TriangleBlock* older;
};

SurfaceXferQZ::SurfaceXferQZ(const char* fileName)
    : m_vertices(nullptr), m_triangles(nullptr), m_vertexCount(0), m_triangleCount(0) {
  std::strncpy(m_fileName, fileName, sizeof m_fileName - 1);
  m_fileName[sizeof m_fileName - 1] = '\0';
  m_stream = m_fopen(kSourceUnit, __LINE__, m_fileName, "wb");
  if (m_stream == nullptr) return;
  if (std::fwrite(kHeader, 1, kHeaderSize, m_stream) != kHeaderSize) {
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
  Vertex* vertex = NextRecord(&m_vertices);
  if (vertex == nullptr) return nullptr;
  *vertex = {xyz[0], xyz[1], xyz[2]};
  ++m_vertexCount;
  return vertex;
}

void* SurfaceXferQZ::AddTriangle(void* a, void* b, void* c, char colour) {
  Triangle* triangle = NextRecord(&m_triangles);
  if (triangle == nullptr) return nullptr;
  *triangle = {{static_cast<Vertex*>(a), static_cast<Vertex*>(b), static_cast<Vertex*>(c)}, colour};
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
