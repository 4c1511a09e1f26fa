#pragma once

#include <optional>

#include "kernel/heal/LinkedMesh.h"

namespace kernel {

// The mesh with its sides linked when, by vertex numbers, it is closed and edge-manifold, its
// facets agree, none is lower than `least`, and every body encloses a volume and faces outwards.
// That no facets cross is not looked at.
std::optional<LinkedMesh> LinkSound(const SurfaceMesh& mesh, double least);

}  // namespace kernel
