#pragma once

#include "kernel/common/Vec3.h"

namespace kernel {

// Whether the facet a, b, c faces to the side that `before` points to and is no needle.
bool IsSoundFacet(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& before);

}  // namespace kernel
