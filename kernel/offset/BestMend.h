#pragma once

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// One change to a mesh, and how much less its facets cost by it (see FacetFit).
struct Mend {
  // An edge is turned; the origin of a half edge joins its target; that origin moves; an edge or a
  // facet gets a new vertex.
  enum class Kind { kNone, kFlip, kJoin, kMove, kSplit, kPoint };
  Kind kind = Kind::kNone;
  HalfEdgeMesh::Index half = 0;  // of kPoint any of the facet
  Vec3 at;                       // of the vertex that moves or is new
  double gain = 0;
};

// What helps a facet that folds or is off most; kNone for other facets and where nothing helps.
// With `mayLose`, what harms least where nothing helps: a detour may lead to a better place.
Mend BestMend(const HalfEdgeMesh& mesh, const LocalOffset& solid, const OffsetLimits& limits,
              HalfEdgeMesh::Index facet, bool mayLose);

}  // namespace kernel
