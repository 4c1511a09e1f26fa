#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kernel/sweep/StockMesh.h"

namespace kernel {

// Parts a mesh's facets into small groups of such as lie near each other when they are spun about
// the x axis; groups with neighbouring numbers do so as well. The mesh has a facet at least.
//
// Method: the facets' centres in the plane of x and r are halved at the median of the wider side.
class SpunGroups {
 public:
  explicit SpunGroups(const StockMesh& mesh);

  std::size_t Count() const { return m_ends.size(); }
  std::span<const std::uint32_t> Facets(std::size_t group) const {
    const std::size_t begin = group == 0 ? 0 : m_ends[group - 1];
    return std::span(m_order).subspan(begin, m_ends[group] - begin);
  }

 private:
  std::vector<std::uint32_t> m_order;
  std::vector<std::size_t> m_ends;  // of each group, in m_order
};

}  // namespace kernel
