#pragma once

#include "kernel/common/RunAside.h"
#include "kernel/heal/LinkedMesh.h"

namespace kernel {

struct FilledHoles {
  std::size_t filled = 0;    // holes
  std::size_t unfilled = 0;  // holes that no facets of height `least` or more can span
};

// Fills each hole with facets between its vertices. A facet takes the colour of a neighbour, those
// at the rim before the others. A fill that would leave a body without volume (the back of an open
// sheet) is not made, but counts as unfilled.
FilledHoles FillHoles(LinkedMesh& linked, double least, const Tell& tell);

}  // namespace kernel
