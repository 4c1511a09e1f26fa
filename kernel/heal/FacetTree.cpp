#include "kernel/heal/FacetTree.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <numeric>
#include <utility>

namespace kernel {
namespace {

// Spreads the lower 21 bits of x to every third bit.
std::uint64_t Spread(std::uint64_t x) {
  x &= 0x1fffff;
  x = (x | x << 32) & 0x1f00000000ffff;
  x = (x | x << 16) & 0x1f0000ff0000ff;
  x = (x | x << 8) & 0x100f00f00f00f00f;
  x = (x | x << 4) & 0x10c30c30c30c30c3;
  x = (x | x << 2) & 0x1249249249249249;
  return x;
}

Box3 BoundsOf(const SurfaceMesh& mesh, const SurfaceMesh::Facet& facet) {
  Box3 box;
  for (std::size_t i = 0; i < 3; ++i) box.Include(mesh.Corner(facet, i));
  return box;
}

}  // namespace

void FacetTree::Box::Include(const Box& other) {
  for (int axis = 0; axis < 3; ++axis) {
    low[axis] = std::min(low[axis], other.low[axis]);
    high[axis] = std::max(high[axis], other.high[axis]);
  }
}

FacetTree::Box FacetTree::Rounded(const Box3& box) const {
  Box rounded;
  for (int axis = 0; axis < 3; ++axis) {
    rounded.low[axis] = static_cast<float>(box.low[axis] - m_origin[axis]);
    rounded.high[axis] = static_cast<float>(box.high[axis] - m_origin[axis]);
  }
  return rounded;
}

FacetTree::FacetTree(const SurfaceMesh& mesh) {
  const Box3 bounds = mesh.Bounds();
  m_origin = bounds.low;
  SortAlongCurve(mesh, bounds);
  m_boxes.reserve(m_order.size());
  for (const Index f : m_order) m_boxes.push_back(Rounded(BoundsOf(mesh, mesh.facets[f])));
  m_groups = (m_order.size() + kGroupSize - 1) / kGroupSize;
  m_leaves = std::bit_ceil(std::max<std::size_t>(m_groups, 1));
  FillNodes();
}

void FacetTree::SortAlongCurve(const SurfaceMesh& mesh, const Box3& bounds) {
  const Vec3 size = bounds.high - bounds.low;
  const double longest = std::max({size.x, size.y, size.z});
  const double scale = longest > 0 ? 0x1fffff / longest : 0;
  std::vector<std::pair<std::uint64_t, Index>> places;
  places.reserve(mesh.facets.size());
  for (Index f = 0; f < mesh.facets.size(); ++f) {
    const Box3 box = BoundsOf(mesh, mesh.facets[f]);
    const Vec3 centre = (0.5 * (box.low - m_origin) + 0.5 * (box.high - m_origin)) * scale;
    const auto part = [&](int axis) { return Spread(static_cast<std::uint64_t>(centre[axis])); };
    places.emplace_back(part(0) | part(1) << 1 | part(2) << 2, f);
  }
  std::sort(places.begin(), places.end());
  m_order.reserve(places.size());
  for (const auto& [place, facet] : places) m_order.push_back(facet);
}

void FacetTree::FillNodes() {
  constexpr float kMost = std::numeric_limits<float>::infinity();
  m_nodes.assign(2 * m_leaves, Box{{kMost, kMost, kMost}, {-kMost, -kMost, -kMost}});
  for (std::size_t i = 0; i < m_order.size(); ++i) {
    m_nodes[m_leaves + i / kGroupSize].Include(m_boxes[i]);
  }
  for (std::size_t n = m_leaves - 1; n > 0; --n) {
    m_nodes[n] = m_nodes[2 * n];
    m_nodes[n].Include(m_nodes[2 * n + 1]);
  }
}

void FacetTree::ForEachWithin(const Box3& box, const std::function<void(Index)>& visit) const {
  const Box sought = Rounded(box);
  ForEachGroup(sought, 0, [&](std::size_t group) {
    for (std::size_t i = group * kGroupSize; i < GroupEnd(group); ++i) {
      if (m_boxes[i].Meets(sought)) visit(m_order[i]);
    }
    return true;
  });
}

}  // namespace kernel
