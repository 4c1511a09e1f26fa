#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

namespace formats {

// Disjoint sets of the numbers 0 .. size - 1. The lowest number of a set is its root, so that the
// outcome does not hang on the order of joins.
class UnionFind {
 public:
  explicit UnionFind(std::size_t size) : parent_(size), sets_(size) {
    std::iota(parent_.begin(), parent_.end(), 0U);
  }

  void Join(std::uint32_t a, std::uint32_t b) {
    a = Root(a);
    b = Root(b);
    if (a == b) return;
    parent_[std::max(a, b)] = std::min(a, b);
    --sets_;
  }

  std::uint32_t Root(std::uint32_t a) {
    while (parent_[a] != a) {
      parent_[a] = parent_[parent_[a]];
      a = parent_[a];
    }
    return a;
  }

  std::size_t Sets() const { return sets_; }

 private:
  std::vector<std::uint32_t> parent_;
  std::size_t sets_;
};

}  // namespace formats
