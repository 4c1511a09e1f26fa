#pragma once

#include <vector>

#include "kernel/compress/CarriedPoints.h"
#include "kernel/compress/FeatureEdges.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

struct CompressLimits {
  double tolerance = 0;  // that the surface may move
  double border = 0;     // that a feature edge may move
  double least = 0;      // height of a facet
};

// A mesh that is being merged, and what it stands for. Vertices keep the numbers of the original.
struct MergedMesh {
  HalfEdgeMesh mesh;
  FeatureEdges features;
  CarriedPoints carried;

  MergedMesh(const HalfEdgeMesh& original, const std::vector<float>& vertexShares)
      : mesh(original), features(original), carried(original), shares(vertexShares) {}

  // The share of the tolerance that each original vertex may use; one of 0 keeps its facets.
  const std::vector<float>& shares;
};

struct PlannedCollapse {
  HalfEdgeMesh::Index half = HalfEdgeMesh::kNone;  // kNone: the vertex stays
  double cost = 0;
};

// The facets around one vertex, and what becomes of them when the vertex moves into a neighbour.
class VertexStar {
 public:
  using Index = HalfEdgeMesh::Index;

  VertexStar(const MergedMesh& merged, const CompressLimits& limits)
      : m_merged(merged), m_mesh(merged.mesh), m_limits(limits) {}

  // The cheapest collapse that is sound and keeps what the facets stand for within the tolerance,
  // as far as the vertices taken out so far and the edges tell.
  PlannedCollapse Plan(Index vertex);

  // What the cheapest collapse would cost if all were sound.
  double LeastCost(Index vertex);

  // The half edges out of the vertex that was looked at last, counter-clockwise.
  const std::vector<Index>& Halves() const { return m_halves; }

 private:
  struct Carried {
    Vec3 point;
    double limitSquared;
    std::size_t facet;  // place of its facet in the star
  };

  std::size_t Count() const { return m_halves.size(); }
  const Vec3& Ring(std::size_t i) const { return m_ring[i % Count()]; }
  std::size_t Before(std::size_t i) const { return (i + Count() - 1) % Count(); }
  bool Vanishes(std::size_t facet, std::size_t to) const {
    return facet == to || facet == Before(to);
  }

  bool Collect(Index vertex);
  void LookAtFacets();
  void LookBeyond();
  bool MayGo() const;
  bool IsStraight() const;
  bool GatherCarried();
  double CostOf(std::size_t to) const;
  bool IsSound(std::size_t to);
  bool KeepsShape(std::size_t to);
  bool IsAsSharp(Index half, const Vec3& normal, const Vec3& other) const;
  bool KeepsSharpness(std::size_t to) const;
  bool StaysNear(std::size_t to) const;
  bool IsNear(const Carried& carried, std::size_t to) const;
  bool CrossesNear(std::size_t to) const;

  const MergedMesh& m_merged;
  const HalfEdgeMesh& m_mesh;
  CompressLimits m_limits;
  Index m_vertex = HalfEdgeMesh::kNone;
  Vec3 m_center;
  double m_worstShape = 0;
  // For each edge out of the vertex: its far end, and the facet after it.
  std::vector<Index> m_halves;
  std::vector<Vec3> m_ring, m_normals, m_beyond, m_after;
  std::vector<double> m_areas;
  std::vector<std::size_t> m_features;
  std::vector<Carried> m_carried;
};

}  // namespace kernel
