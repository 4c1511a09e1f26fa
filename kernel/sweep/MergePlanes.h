#pragma once

#include <functional>

#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

struct MergedPlanes {
  CutMesh mesh;
  std::size_t slivers = 0;  // facets without area that could not be removed
};

// Removes facets without area and merges those of one colour in one plane; no vertex moves by more
// than a billionth of `diagonal`, that of the whole body's box, no surface by more than a hundredth
// of that. `watch` hears the share that is done, roughly.
MergedPlanes MergePlanes(HalfEdgeMesh mesh, double diagonal,
                         const std::function<void(double)>& watch);

}  // namespace kernel
