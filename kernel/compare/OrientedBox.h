#pragma once

#include <span>

#include "kernel/compare/FacetBoxes.h"
#include "kernel/compare/TriangleFrame.h"

namespace kernel {

// A box around facets that lies as they do: where a surface runs across the axes it is much thinner
// than a box along them. In single precision and in the coordinates of the tree; rounded outwards
// by more than the distance from it is off for places between -1 and 1.
class alignas(64) OrientedBox {
 public:
  OrientedBox() = default;
  // Along the mean normal of the facets.
  OrientedBox(const FacetBoxes& boxes, std::span<const Corners> facets);

  float SquaredDistance(const FacetBoxes::Place& place) const {
    const float x = place.at[0] - m_centre[0];
    const float y = place.at[1] - m_centre[1];
    const float z = place.at[2] - m_centre[2];
    float square = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      const float along = x * m_axes[i][0] + y * m_axes[i][1] + z * m_axes[i][2];
      const float outside = (along < 0 ? -along : along) - m_half[i];
      const float away = outside > 0 ? outside : 0;
      square += away * away;
    }
    return square;
  }

 private:
  float m_centre[3] = {};
  float m_half[3] = {};
  float m_axes[3][3] = {};
};

}  // namespace kernel
