#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kernel/common/Vec3.h"

namespace kernel {

// A closed mesh on its way to the output, counter-clockwise seen from outside.
struct CutMesh {
  struct Facet {
    std::array<std::uint32_t, 3> vertices;
    std::uint8_t colour = 0;
  };

  std::vector<Vec3> vertices;
  std::vector<Facet> facets;
};

}  // namespace kernel
