#pragma once

#include "formats/Mesh.h"
#include "host/measure/Point.h"

namespace host {

/// The facet's corners.
inline Triangle TriangleOf(const formats::Mesh& mesh, const formats::Facet& facet) {
  const auto at = [&](std::size_t i) {
    return mesh.vertices[static_cast<std::size_t>(facet.vertices[i])];
  };
  return {at(0), at(1), at(2)};
}

}  // namespace host
