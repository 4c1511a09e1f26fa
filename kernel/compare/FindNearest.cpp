// The nearest facet: down the tree, nearest boxes first, while they are nearer than what was found.

#include <array>
#include <bit>
#include <cmath>

#include "kernel/compare/StockTree.h"

namespace kernel {
namespace {

constexpr std::size_t kWidth = FacetBoxes::kWidth;

// The squared distance of a place to each child's box; infinite to one that is not there.
void SquaredDistances(const FacetBoxes::Node& node, const FacetBoxes::Place& place,
                      float* __restrict squares) {
  for (std::size_t c = 0; c < kWidth; ++c) squares[c] = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const float at = place.at[axis];
    for (std::size_t c = 0; c < kWidth; ++c) {
      const float below = node.low[axis][c] - at;
      const float above = at - node.high[axis][c];
      const float outside = below > above ? below : above;
      const float away = outside > 0.0F ? outside : 0.0F;
      squares[c] += away * away;
    }
  }
}

// A squared distance in the tree's coordinates above which no box is worth a look.
class Reach {
 public:
  Reach(double scale, double error) : m_scale(scale), m_error(error) {}

  float Of(double square) const {
    const double reach = (std::sqrt(square) * m_scale + m_error) * (1 + 1e-6);
    return static_cast<float>(reach * reach);
  }

 private:
  double m_scale, m_error;
};

// Squares are never below 0, so that as whole numbers they are in the same order.
std::uint64_t KeyOf(float square, std::size_t child) {
  return std::uint64_t{std::bit_cast<std::uint32_t>(square)} << 32 | child;
}

float SquareOf(std::uint64_t key) {
  return std::bit_cast<float>(static_cast<std::uint32_t>(key >> 32));
}

// The children nearer than `reach`, nearest first; how many.
std::size_t Order(const float* squares, float reach, std::array<std::uint64_t, kWidth>& keys) {
  std::size_t count = 0;
  for (std::size_t c = 0; c < kWidth; ++c) {
    if (squares[c] >= reach) continue;
    const std::uint64_t key = KeyOf(squares[c], c);
    std::size_t at = count++;
    for (; at > 0 && keys[at - 1] > key; --at) keys[at] = keys[at - 1];
    keys[at] = key;
  }
  return count;
}

}  // namespace

StockTree::Nearest StockTree::FindNearest(const Vec3& point, std::uint32_t guess) const {
  const FacetBoxes::Place place = m_boxes.PlaceOf(point);
  const Reach reachOf(m_boxes.Scale(), 2 * FacetBoxes::Error(place));
  Nearest best{guess, m_frames[guess].SquaredDistance(point)};
  float reach = reachOf.Of(best.square);
  const FacetBoxes::Node* nodes = m_boxes.Nodes().data();
  std::array<std::uint64_t, kStack> stack;  // a box's square over its node
  std::size_t depth = 0;
  stack[depth++] = KeyOf(0, 0);
  while (depth > 0) {
    const std::uint64_t entry = stack[--depth];
    if (SquareOf(entry) >= reach) continue;
    const FacetBoxes::Node& node = nodes[static_cast<std::uint32_t>(entry)];
    alignas(32) float squares[kWidth];
    SquaredDistances(node, place, squares);
    std::array<std::uint64_t, kWidth> keys;
    const std::size_t count = Order(squares, reach, keys);
    // Leaves at once, as they may rule the others out.
    for (std::size_t i = 0; i < count; ++i) {
      const auto child = static_cast<std::uint32_t>(keys[i]);
      if (node.count[child] == 0 || SquareOf(keys[i]) >= reach) continue;
      const std::uint32_t end = node.first[child] + node.count[child];
      for (std::uint32_t slot = node.first[child]; slot < end; ++slot) {
        const double square = m_frames[slot].SquaredDistance(point);
        if (square >= best.square) continue;
        best = {slot, square};
        reach = reachOf.Of(square);
      }
    }
    for (std::size_t i = count; i > 0; --i) {
      const auto child = static_cast<std::uint32_t>(keys[i - 1]);
      if (node.count[child] > 0 || SquareOf(keys[i - 1]) >= reach) continue;
      stack[depth++] = KeyOf(SquareOf(keys[i - 1]), node.first[child]);
    }
  }
  return best;
}

}  // namespace kernel
