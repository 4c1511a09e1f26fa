#include "kernel/spin/SpunGroups.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "kernel/spin/SpunArc.h"

namespace kernel {
namespace {

// Facets of a group. Measured on balls and on a body with bumps: half as many and twice as many
// take as long, sixteen times as many up to three times as long.
constexpr std::size_t kMostFacets = 4;

class GroupMaker {
 public:
  explicit GroupMaker(const StockMesh& mesh) : m_order(mesh.facets.size()) {
    std::iota(m_order.begin(), m_order.end(), 0U);
    m_centres.reserve(mesh.facets.size());
    for (const StockMesh::Facet& facet : mesh.facets) {
      const auto corner = [&](std::size_t i) { return Spun(mesh.vertices[facet.vertices[i]]); };
      const Point2 a = corner(0), b = corner(1), c = corner(2);
      // A third of each first: the sum of large ones might overflow.
      m_centres.push_back({a.x / 3 + b.x / 3 + c.x / 3, a.y / 3 + b.y / 3 + c.y / 3});
    }
  }

  void Make(std::size_t begin, std::size_t end) {
    if (end - begin <= kMostFacets) {
      m_ends.push_back(end);
      return;
    }
    const bool alongX = IsWiderAlongX(begin, end);
    const std::size_t middle = begin + (end - begin) / 2;
    std::nth_element(At(begin), At(middle), At(end), [&](std::uint32_t a, std::uint32_t b) {
      const double ofA = alongX ? m_centres[a].x : m_centres[a].y;
      const double ofB = alongX ? m_centres[b].x : m_centres[b].y;
      return ofA != ofB ? ofA < ofB : a < b;
    });
    Make(begin, middle);
    Make(middle, end);
  }

  std::vector<std::uint32_t> TakeOrder() { return std::move(m_order); }
  std::vector<std::size_t> TakeEnds() { return std::move(m_ends); }

 private:
  std::vector<std::uint32_t>::iterator At(std::size_t i) {
    return m_order.begin() + static_cast<std::ptrdiff_t>(i);
  }

  bool IsWiderAlongX(std::size_t begin, std::size_t end) const {
    Point2 low = m_centres[m_order[begin]], high = low;
    for (std::size_t i = begin; i < end; ++i) {
      const Point2& centre = m_centres[m_order[i]];
      low = {std::min(low.x, centre.x), std::min(low.y, centre.y)};
      high = {std::max(high.x, centre.x), std::max(high.y, centre.y)};
    }
    return high.x - low.x >= high.y - low.y;
  }

  std::vector<std::uint32_t> m_order;
  std::vector<std::size_t> m_ends;
  std::vector<Point2> m_centres;
};

}  // namespace

SpunGroups::SpunGroups(const StockMesh& mesh) {
  GroupMaker maker(mesh);
  maker.Make(0, mesh.facets.size());
  m_order = maker.TakeOrder();
  m_ends = maker.TakeEnds();
}

}  // namespace kernel
