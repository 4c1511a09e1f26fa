#pragma once

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// Whether the facet a, b, c faces to the side that `before` points to and is no needle.
bool IsSoundFacet(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& before);

// Whether every facet around the vertex, but those that it shares with `merged`, stays sound when
// the vertex moves.
bool MayMove(const HalfEdgeMesh& mesh, HalfEdgeMesh::Index vertex, const Vec3& to,
             HalfEdgeMesh::Index merged = HalfEdgeMesh::kNone);

// Whether the facet of a half edge becomes two sound ones by a vertex on that edge.
bool MaySplitSide(const HalfEdgeMesh& mesh, HalfEdgeMesh::Index half, const Vec3& at);

}  // namespace kernel
