#pragma once

#include <cstddef>

#include "kernel/sweep/CutMesh.h"

/// Edge collapse with a library's own quadrics and placement down to `facets`, on one thread, with
/// no bound, as a yardstick: from mesh to mesh, colours left out.
kernel::CutMesh PlainCollapse(const kernel::CutMesh& mesh, std::size_t facets);
