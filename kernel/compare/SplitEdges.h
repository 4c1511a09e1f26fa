#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kernel/common/Vec3.h"

namespace kernel {

// A facet of the part or a piece of one.
struct PartPiece {
  // No band is known to hold it yet.
  static constexpr std::int32_t kOpen = -1;

  std::array<std::uint32_t, 3> vertices;
  std::int32_t band = kOpen;
};

struct PartEdge {
  std::uint32_t low, high;  // vertices, low < high

  PartEdge(std::uint32_t a, std::uint32_t b) : low(a < b ? a : b), high(a < b ? b : a) {}
  friend bool operator==(const PartEdge&, const PartEdge&) = default;
  friend bool operator<(const PartEdge& a, const PartEdge& b) {
    return a.low != b.low ? a.low < b.low : a.high < b.high;
  }
};

// Halves the edges, each for all pieces that share it, and the pieces with them: a piece with
// several of them first at the longest. New vertices come after the given ones; the parts of a
// piece take its place in the order and have its band.
void SplitEdges(std::vector<PartEdge> edges, std::vector<Vec3>& vertices,
                std::vector<PartPiece>& pieces);

// Halfway between two points, the same for either order.
Vec3 Halfway(const Vec3& a, const Vec3& b);

// Which edge of a piece, from its corner i to the next, is the longest; the first of those that
// differ by rounding only.
std::size_t LongestEdge(const std::array<Vec3, 3>& corners);

}  // namespace kernel
