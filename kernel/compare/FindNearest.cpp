// The nearest facet: down the tree, nearest boxes first, while they are nearer than what was found.

#include <array>
#include <bit>
#include <cmath>

#include "kernel/compare/StockTree.h"

namespace kernel {
namespace {

constexpr std::size_t kWidth = FacetBoxes::kWidth;

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
std::uint32_t BitsOf(float square) { return std::bit_cast<std::uint32_t>(square); }

// The lowest bits of a square, which may be rounded down, give way to the number of a child.
constexpr std::uint32_t kChild = kWidth - 1;

// The children nearer than `reach`; how many. Without branches, which could not be foretold.
std::size_t Near(const float* squares, float reach, std::array<std::uint32_t, kWidth>& keys) {
  std::size_t count = 0;
  for (std::uint32_t c = 0; c < kWidth; ++c) {
    keys[count] = (BitsOf(squares[c]) & ~kChild) | c;
    count += static_cast<std::size_t>(squares[c] < reach);
  }
  return count;
}

void Sort(std::array<std::uint32_t, kWidth>& keys, std::size_t count) {
  for (std::size_t i = 1; i < count; ++i) {
    const std::uint32_t key = keys[i];
    std::size_t at = i;
    for (; at > 0 && keys[at - 1] > key; --at) keys[at] = keys[at - 1];
    keys[at] = key;
  }
}

}  // namespace

StockTree::Nearest StockTree::FindNearest(const Vec3& point, std::uint32_t guess) const {
  const FacetBoxes::Place place = m_boxes.PlaceOf(point);
  const Reach reachOf(m_boxes.Scale(), FacetLeaf::kError * FacetBoxes::Largest(place));
  Nearest best{guess, m_frames[guess].SquaredDistance(point)};
  float reach = reachOf.Of(best.square);
  std::array<std::uint32_t, kWidth> keys;
  alignas(32) float squares[kWidth];
  const auto lookInto = [&](std::uint32_t number) {
    alignas(32) float facetSquares[kWidth];
    std::array<std::uint32_t, kWidth> near;
    m_leaves[number].SquaredDistances(place, facetSquares);
    const std::size_t count = Near(facetSquares, reach, near);
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t facet = near[i] & kChild;
      if (facetSquares[facet] >= reach) continue;
      const std::uint32_t slot = m_boxes.Leaves()[number].begin + facet;
      const double square = m_frames[slot].SquaredDistance(point);
      if (square >= best.square) continue;
      best = {slot, square};
      reach = reachOf.Of(square);
    }
  };
  struct Entry {
    float square;
    std::uint32_t node;
  };
  std::array<Entry, kStack> stack;
  std::size_t depth = 0;
  stack[depth++] = {0, 0};
  while (depth > 0) {
    const Entry entry = stack[--depth];
    if (entry.square >= reach) continue;
    const FacetBoxes::Node& node = m_boxes.Nodes()[entry.node];
    node.SquaredDistances(place, squares);
    const std::size_t count = Near(squares, reach, keys);
    Sort(keys, count);
    // Leaves at once, as they may rule the others out.
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t c = keys[i] & kChild;
      if (node.isLeaf[c] && squares[c] < reach) lookInto(node.child[c]);
    }
    for (std::size_t i = count; i > 0; --i) {
      const std::uint32_t c = keys[i - 1] & kChild;
      if (!node.isLeaf[c] && squares[c] < reach) stack[depth++] = {squares[c], node.child[c]};
    }
  }
  return best;
}

}  // namespace kernel
