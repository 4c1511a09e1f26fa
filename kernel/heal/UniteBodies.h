#pragma once

#include <functional>
#include <optional>

#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

// The union of two closed, outward bodies neither of which crosses itself: their vertices that stay
// are where they were, facets keep the colours of those that they are part of. Nothing when the
// result would not be edge-manifold or the bodies are not as they should be. `check` is called
// often; what it throws reaches the caller.
std::optional<SurfaceMesh> UniteBodies(const SurfaceMesh& a, const SurfaceMesh& b,
                                       const std::function<void()>& check);

}  // namespace kernel
