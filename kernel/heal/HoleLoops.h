#pragma once

#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// The holes of the surface: for each the open sides around it, so that each side's target is the
// origin of the side before it (the last one's for the first). No loop comes to a vertex twice: one
// that would is cut into several there. Two open sides left alone with each other in such a cut are
// linked instead.
std::vector<std::vector<LinkedMesh::Index>> HoleLoops(LinkedMesh& linked);

}  // namespace kernel
