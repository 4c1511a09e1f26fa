#pragma once

#include <string>

#include "kernel/common/Box3.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

struct PreparedStock {
  StockMesh mesh;       // vertices with the same three doubles joined, facets of no extent left out
  Box3 box;             // of the vertices that facets use
  bool turned = false;  // facets faced inwards as a whole and have been turned
};

// Checks what a stock must be. Throws FatalError naming the vertex (counted from 1, as in a surface
// file) when a coordinate is not finite, and when the mesh has no facet, no volume, or an edge that
// is not run through as often one way as the other.
PreparedStock PrepareStock(const StockMesh& given);

// Parts the vertices at which bodies or sheets only touch, so that each edge is in exactly two
// facets by vertex number: facets around a vertex that do not hang together through edges get
// vertices of their own. Facets keep their order.
StockMesh WithOwnVertices(const StockMesh& mesh);

// Throws FatalError that names the first vertex whose coordinates are not finite, counted from 1 as
// in a surface file; `name` says of which mesh.
void CheckFinite(const StockMesh& mesh, const std::string& name);

// How many edges are not run through as often one way as the other.
std::size_t CountOpenEdges(const StockMesh& mesh);

// Has all facets face the other way.
void TurnOver(StockMesh& mesh);

// Six times the enclosed volume, positive when facets face outwards. Taken about the first vertex,
// so that a mesh far from the origin loses no digits.
double SixfoldVolume(const StockMesh& mesh);

}  // namespace kernel
