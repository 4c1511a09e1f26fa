#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kernel/common/Vec3.h"

namespace kernel {

// The numbers of the points along a space-filling curve, so that neighbours in the order are mostly
// near each other.
std::vector<std::uint32_t> OrderAlongCurve(std::span<const Vec3> points);

}  // namespace kernel
