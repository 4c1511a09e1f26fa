#pragma once

#include <cstdint>
#include <vector>

#include "kernel/sweep/CutMesh.h"

namespace kernel {

// A closed edge-manifold mesh that can lose and turn edges. Half edge 3 f + i runs from corner i of
// facet f to its next one. Every change keeps the mesh closed and edge-manifold by vertex number.
class HalfEdgeMesh {
 public:
  using Index = std::uint32_t;
  static constexpr Index kNone = UINT32_MAX;

  explicit HalfEdgeMesh(CutMesh mesh);

  // Whether the mesh was what it has to be: each edge in exactly two facets, once in each
  // direction.
  bool IsClosed() const;

  std::size_t VertexCount() const { return m_mesh.vertices.size(); }
  std::size_t FacetCount() const { return m_mesh.facets.size(); }
  const Vec3& At(Index vertex) const { return m_mesh.vertices[vertex]; }
  bool IsLive(Index facet) const { return m_mesh.facets[facet].vertices[0] != kNone; }

  Index Origin(Index half) const { return m_mesh.facets[half / 3].vertices[half % 3]; }
  Index Target(Index half) const { return Origin(Next(half)); }
  static Index Next(Index half) { return half % 3 == 2 ? half - 2 : half + 1; }
  static Index Previous(Index half) { return half % 3 == 0 ? half + 2 : half - 1; }
  Index Twin(Index half) const { return m_twin[half]; }
  // A half edge out of the vertex, kNone for one that no facet uses.
  Index Out(Index vertex) const { return m_out[vertex]; }
  // The next half edge out of the same vertex, counter-clockwise.
  Index Around(Index half) const { return m_twin[Previous(half)]; }
  std::uint8_t Colour(Index facet) const { return m_mesh.facets[facet].colour; }

  std::vector<Index> LiveFacets() const;
  // The edges of the facets, each once, by one of their half edges in those facets.
  std::vector<Index> EdgesOf(const std::vector<Index>& facets) const;

  // Whether the edge's ends may become one: they have no neighbours in common but the two vertices
  // opposite the edge, and neither of these would be left with two facets.
  bool CanCollapse(Index half) const;
  // Moves the origin into the target; the two facets at the edge go.
  void Collapse(Index half);

  // Whether the edge may be turned to join the vertices opposite it, which are not neighbours yet.
  bool CanFlip(Index half) const;
  // Both facets take the colour of the facet across `half`.
  void Flip(Index half);

  void MoveTo(Index vertex, const Vec3& position) { m_mesh.vertices[vertex] = position; }
  void SetColour(Index facet, std::uint8_t colour) { m_mesh.facets[facet].colour = colour; }

  // Puts a new vertex on the edge: each of the two facets at it becomes two, in its colour. The
  // facets keep their numbers for the halves at the edge's origin; the new ones are numbered last.
  void SplitEdge(Index half, const Vec3& position);
  // Puts a new vertex into the facet, which becomes three in its colour; two are new.
  void SplitFacet(Index facet, const Vec3& position);

  // What is left, facets in their order.
  CutMesh Release();

 private:
  // The two facets at an edge, their vertices, and the half edges across their other sides.
  struct EdgeSurroundings {
    Index facet, beyond;
    Index from, to, left, right;
    Index toLeft, leftFrom, fromRight, rightTo;
  };
  EdgeSurroundings Surroundings(Index half) const;

  void LinkTwins();
  bool AreNeighbours(Index a, Index b) const;
  int Valence(Index vertex) const;
  Index AddVertex(const Vec3& position);
  Index AddFacet(const std::array<Index, 3>& vertices, std::uint8_t colour);
  void Glue(Index a, Index b) {
    m_twin[a] = b;
    m_twin[b] = a;
  }

  CutMesh m_mesh;
  std::vector<Index> m_twin, m_out;
};

}  // namespace kernel
