#pragma once

#include <vector>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// The edges that merging has to keep: those where facets of two colours meet, and sharp ones, where
// the facets' normals turn by more than 35 degrees. Half edges are numbered as in the mesh.
class FeatureEdges {
 public:
  using Index = HalfEdgeMesh::Index;

  explicit FeatureEdges(const HalfEdgeMesh& mesh);

  bool Is(Index half) const { return m_moved[half] != kNoFeature; }
  // How far the edge may be from the edges that it stands for; 0 for one that is no feature.
  double Moved(Index half) const { return Is(half) ? static_cast<double>(m_moved[half]) : 0; }

  // Both half edges.
  void SetMoved(const HalfEdgeMesh& mesh, Index half, double moved);
  // Makes two edges that are about to become one features when either is.
  void Join(Index a, Index b);

 private:
  static constexpr float kNoFeature = -1;

  std::vector<float> m_moved;
};

// Whether facets of these unit normals meet at an edge that is sharp.
bool IsSharp(const Vec3& normal, const Vec3& other);

}  // namespace kernel
