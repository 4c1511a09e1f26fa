#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

namespace kernel {

// Disjoint sets of the numbers 0 .. size - 1. The smallest number of a set is its root, so that the
// outcome does not depend on the order of joining.
class UnionFind {
 public:
  explicit UnionFind(std::size_t size) : m_parent(size) {
    std::iota(m_parent.begin(), m_parent.end(), 0U);
  }

  std::uint32_t Root(std::uint32_t i) {
    while (m_parent[i] != i) i = m_parent[i] = m_parent[m_parent[i]];
    return i;
  }

  void Join(std::uint32_t a, std::uint32_t b) {
    a = Root(a);
    b = Root(b);
    m_parent[std::max(a, b)] = std::min(a, b);
  }

 private:
  std::vector<std::uint32_t> m_parent;
};

}  // namespace kernel
