#pragma once

#include <vector>

#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

// A mesh whose facets all run the same way round across their linked sides.
struct LinkedMesh {
  using Index = SurfaceMesh::Index;

  SurfaceMesh mesh;
  std::vector<Index> twin;  // the side on the other side of the edge, kNone where it is open

  bool IsOpen(Index side) const { return twin[side] == SurfaceMesh::kNone; }
  void Link(Index a, Index b) {
    twin[a] = b;
    twin[b] = a;
  }

  // For each facet the number of the body that it is part of, going across links. Bodies are
  // numbered from 0 in the order of their first facets.
  std::vector<Index> Bodies() const;

  // Removes the marked facets; the sides across from them become open. The order is kept.
  void Erase(const std::vector<bool>& removed);

  // Turns the marked facets over; links stay.
  void TurnOver(const std::vector<bool>& turned);
};

}  // namespace kernel
