#pragma once

#include "kernel/sweep/StockMesh.h"
#include "stock/SurfaceTransfer.h"

namespace kernel {

// Takes a mesh as it is played in. Calls nobody back and, playing, throws nothing: a null return
// says that there was no memory, or that a handle is none of this channel's. Handles stay good
// until Reset.
class StockChannel final : public SurfaceTransfer {
 public:
  int Reset() override;
  void* AddVertex(const double* xyz) override;
  void* AddTriangle(void* a, void* b, void* c, char colour) override;
  void Close() override {}

  // Throws std::bad_alloc when some of the mesh was refused for want of memory: who plays it in
  // need not have looked, and what is left is another mesh.
  const StockMesh& Mesh() const;

 private:
  StockMesh m_mesh;
  bool m_isIncomplete = false;
};

}  // namespace kernel
