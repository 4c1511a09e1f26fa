#pragma once

// The surface channel and its loader as plainly as they can be written: one stdio call a field,
// stdio's own buffers. Only for comparison.

#include <cstdint>
#include <cstdio>

#include "stock/SurfaceTransfer.h"

class PlainSurfaceXfer : public SurfaceTransfer {
 public:
  explicit PlainSurfaceXfer(const char* fileName);
  PlainSurfaceXfer(const PlainSurfaceXfer&) = delete;
  PlainSurfaceXfer& operator=(const PlainSurfaceXfer&) = delete;
  ~PlainSurfaceXfer();

  int Reset() override;
  void* AddVertex(const double* xyz) override;
  void* AddTriangle(void* a, void* b, void* c, char colour) override;
  void Close() override;

 private:
  static constexpr std::int16_t kBlockSize = 500;
  struct VertexBlock {
    double records[kBlockSize][3];
    std::int16_t count;
    VertexBlock* next;
  };
  struct Triangle {
    double* corners[3];
    char colour;
  };
  struct TriangleBlock {
    Triangle records[kBlockSize];
    std::int16_t count;
    TriangleBlock* next;
  };

  bool WriteVertices();
  bool WriteTriangles();
  void FreeBlocks();

  VertexBlock* m_vertices = nullptr;
  TriangleBlock* m_triangles = nullptr;
  std::int32_t m_vertexCount = 0;
  std::int32_t m_triangleCount = 0;
  FILE* m_stream;
};

bool PlainLoadSurface(const char* fileName, SurfaceTransfer* channel);
