#pragma once

#include "platform/SystemTypes.h"
#include "stock/SurfaceTransfer.h"

/// A channel whose mesh ends up in a binary surface file: it is held in memory until Close.
/// Records are kept in blocks linked newest first and never move; the file lists them in that
/// order, newest block first, so a mesh of more than 500 records changes its order.
class SurfaceXferQZ final : public SurfaceTransfer {
 public:
  /// Creates the file and writes its header. A failure shows at Close, as a file that is not
  /// there. `fileName` is cut to 255 characters.
  explicit SurfaceXferQZ(const char* fileName);
  SurfaceXferQZ(const SurfaceXferQZ&) = delete;
  SurfaceXferQZ& operator=(const SurfaceXferQZ&) = delete;
  /// Without Close the file is left with nothing but its header. Not virtual, like the interface.
  ~SurfaceXferQZ();

  int Reset() override;
  /// Returns the address of the stored record.
  void* AddVertex(const double* xyz) override;
  /// Returns the block that took the triangle.
  void* AddTriangle(void* a, void* b, void* c, char colour) override;
  /// Writes the mesh and closes the file; removes the file when a write failed or when it could
  /// not be created. The channel is empty afterwards and must not be closed again.
  void Close() override;

 private:
  struct VertexBlock;
  struct TriangleBlock;

  void FreeBlocks();
  bool WriteBody();

  VertexBlock* m_vertices;
  TriangleBlock* m_triangles;
  int m_vertexCount;
  int m_triangleCount;
  FILE* m_stream;
  char m_fileName[256];
};
