#include "formats/VertexJoiner.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace formats {
namespace {

constexpr std::int32_t none = -1;

// splitmix64's finishing step (S. Vigna, public domain): spreads neighbouring bit patterns.
std::uint64_t Mixed(std::uint64_t x) {
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9U;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebU;
  return x ^ (x >> 31);
}

std::size_t Hash(const std::array<double, 3>& place) {
  std::uint64_t hash = 0;
  // Adding 0 turns -0 into 0, with which it must share a slot.
  for (const double x : place) hash = Mixed(hash + std::bit_cast<std::uint64_t>(x + 0.0));
  return static_cast<std::size_t>(hash);
}

}  // namespace

VertexJoiner::VertexJoiner(std::vector<std::array<double, 3>>& vertices)
    : vertices_(vertices), table_(1024, none) {}

std::int32_t VertexJoiner::Number(const std::array<double, 3>& place) {
  const auto next = static_cast<std::int32_t>(vertices_.size());
  // NaN would never be found again, and a table full of it would be searched to its end each time.
  if (std::any_of(place.begin(), place.end(), [](double c) { return std::isnan(c); })) {
    vertices_.push_back(place);
    return next;
  }
  std::size_t slot = SlotOf(place);
  if (table_[slot] != none) return table_[slot];
  vertices_.push_back(place);
  table_[slot] = next;
  if (2 * vertices_.size() > table_.size()) Grow();
  return next;
}

std::size_t VertexJoiner::SlotOf(const std::array<double, 3>& place) const {
  const std::size_t mask = table_.size() - 1;
  std::size_t slot = Hash(place) & mask;
  while (table_[slot] != none && vertices_[static_cast<std::size_t>(table_[slot])] != place) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

void VertexJoiner::Grow() {
  table_.assign(2 * table_.size(), none);
  for (std::size_t v = 0; v < vertices_.size(); ++v) {
    if (vertices_[v] == vertices_[v]) table_[SlotOf(vertices_[v])] = static_cast<std::int32_t>(v);
  }
}

}  // namespace formats
