// Whether the surface comes near a triangle: down the tree past boxes that lie further from the
// triangle's box or from its plane.

#include <algorithm>
#include <array>
#include <cmath>

#include "kernel/compare/StockTree.h"
#include "kernel/compare/TriangleProbe.h"

namespace kernel {
namespace {

constexpr std::size_t kWidth = FacetBoxes::kWidth;

// What rounding to single precision may add up to, in the tree's coordinates, times the largest
// coordinate.
constexpr float kSlack = 2e-6F;

// The space around a triangle, in the tree's coordinates.
class Neighbourhood {
 public:
  Neighbourhood(const FacetBoxes& boxes, const TriangleProbe& probe, double limit) {
    for (int axis = 0; axis < 3; ++axis) {
      m_low[axis] = std::numeric_limits<float>::infinity();
      m_high[axis] = -m_low[axis];
      m_normal[axis] = static_cast<float>(probe.Normal()[axis]);
      m_steepness[axis] = std::abs(m_normal[axis]);
    }
    float largest = 1;
    for (const Vec3& corner : probe.Points()) {
      const FacetBoxes::Place place = boxes.PlaceOf(corner);
      for (int axis = 0; axis < 3; ++axis) {
        m_low[axis] = std::min(m_low[axis], place.at[axis]);
        m_high[axis] = std::max(m_high[axis], place.at[axis]);
        largest = std::max(largest, std::abs(place.at[axis]));
      }
      m_height = Height(place.at);
    }
    m_limit = static_cast<float>(limit * boxes.Scale()) * (1 + kSlack) + kSlack * largest;
  }

  // Which children's boxes it may reach.
  void FindMet(const FacetBoxes::Boxes& node, int* __restrict met) const {
    float squares[kWidth] = {}, heights[kWidth], reaches[kWidth];
    for (std::size_t c = 0; c < kWidth; ++c) {
      heights[c] = -2 * m_height;
      reaches[c] = 2 * m_limit;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      for (std::size_t c = 0; c < kWidth; ++c) {
        const float low = node.low[axis][c];
        const float high = node.high[axis][c];
        const float above = low - m_high[axis];
        const float below = m_low[axis] - high;
        const float outside = above > below ? above : below;
        const float away = outside > 0.0F ? outside : 0.0F;
        squares[c] += away * away;
        heights[c] += m_normal[axis] * (low + high);
        reaches[c] += m_steepness[axis] * (high - low);
      }
    }
    const float square = m_limit * m_limit;
    for (std::size_t c = 0; c < kWidth; ++c) {
      met[c] = static_cast<int>(squares[c] <= square) &
               static_cast<int>(std::abs(heights[c]) <= reaches[c]);
    }
  }

 private:
  float Height(const float* at) const {
    return m_normal[0] * at[0] + m_normal[1] * at[1] + m_normal[2] * at[2];
  }

  float m_low[3], m_high[3], m_normal[3], m_steepness[3];
  float m_height = 0, m_limit = 0;
};

}  // namespace

bool StockTree::ComesWithin(const Corners& triangle, double limit) const {
  const FacetBoxes::Node* nodes = m_boxes.Nodes().data();
  const TriangleProbe probe(triangle);
  const Neighbourhood around(m_boxes, probe, limit);
  std::array<std::uint32_t, kStack> stack;
  std::size_t depth = 0;
  stack[depth++] = 0;
  while (depth > 0) {
    const FacetBoxes::Node& node = nodes[stack[--depth]];
    int met[kWidth];
    around.FindMet(node, met);
    for (std::size_t c = 0; c < kWidth; ++c) {
      if (met[c] == 0) continue;
      if (!node.isLeaf[c]) {
        stack[depth++] = node.child[c];
        continue;
      }
      const FacetBoxes::Leaf& leaf = m_boxes.Leaves()[node.child[c]];
      int facetMet[kWidth];
      around.FindMet(leaf, facetMet);
      for (std::uint32_t slot = leaf.begin; slot < leaf.end; ++slot) {
        if (facetMet[slot - leaf.begin] == 0) continue;
        if (probe.IsWithin(limit, m_corners[slot], m_frames[slot])) return true;
      }
    }
  }
  return false;
}

}  // namespace kernel
