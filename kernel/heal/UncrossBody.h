#pragma once

#include <functional>
#include <optional>

#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

// A closed body that crosses itself, with the surface around the crossing facets made anew within
// `tolerance` of where it was. Other facets stay, new ones take a neighbour's colour. Nothing when
// the library finds no way. Whether the result still crosses itself is the caller's to
// check. `check` is called often; what it throws reaches the caller.
std::optional<SurfaceMesh> UncrossBody(const SurfaceMesh& body, double tolerance,
                                       const std::function<void()>& check);

}  // namespace kernel
