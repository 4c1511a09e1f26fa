#pragma once

#include <array>

#include "kernel/common/Vec3.h"

namespace kernel {

// xx, xy, xz, yy, yz, zz.
using SymmetricMatrix = std::array<double, 6>;

struct EigenPair {
  double value = 0;
  Vec3 direction;  // unit
};

// All three, the largest value first. Jacobi's method: directions are orthogonal and values exact
// to rounding relative to the largest.
std::array<EigenPair, 3> SymmetricEigen(const SymmetricMatrix& matrix);

}  // namespace kernel
