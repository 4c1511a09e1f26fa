#include "kernel/heal/PointTree.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kernel {

struct PointTree::Query {
  const Point& from;
  double limitSquared;
  const std::function<bool(Index)>& accepts;
  std::optional<Point> best;

  std::tuple<Index, Index> PairWith(Index number) const { return std::minmax(from.number, number); }

  void Offer(const Point& point) {
    const double squared = LengthSquared(point.place - from.place);
    if (squared > limitSquared || point.number == from.number) return;
    if (squared == limitSquared && (!best || PairWith(best->number) <= PairWith(point.number))) {
      return;
    }
    if (!accepts(point.number)) return;
    limitSquared = squared;
    best = point;
  }
};

PointTree::PointTree(std::vector<Point> points)
    : m_points(std::move(points)), m_axis(m_points.size()) {
  Build(0, m_points.size());
}

void PointTree::Build(std::size_t first, std::size_t last) {
  if (first == last) return;
  Box3 box;
  for (std::size_t i = first; i < last; ++i) box.Include(m_points[i].place);
  const Vec3 size = box.high - box.low;
  const int axis = size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
  const std::size_t middle = first + (last - first) / 2;
  const auto at = [&](std::size_t i) { return m_points.begin() + static_cast<std::ptrdiff_t>(i); };
  std::nth_element(at(first), at(middle), at(last), [axis](const Point& a, const Point& b) {
    return std::pair(a.place[axis], a.number) < std::pair(b.place[axis], b.number);
  });
  m_axis[middle] = static_cast<std::uint8_t>(axis);
  Build(first, middle);
  Build(middle + 1, last);
}

std::optional<PointTree::Point> PointTree::Nearest(
    const Point& from, double limit, const std::function<bool(Index)>& accepts) const {
  Query query{from, limit * limit, accepts, {}};
  Find(0, m_points.size(), query);
  return query.best;
}

void PointTree::Find(std::size_t first, std::size_t last, Query& query) const {
  if (first == last) return;
  const std::size_t middle = first + (last - first) / 2;
  const int axis = m_axis[middle];
  const double beyond = query.from.place[axis] - m_points[middle].place[axis];
  query.Offer(m_points[middle]);
  const bool left = beyond < 0;
  Find(left ? first : middle + 1, left ? middle : last, query);
  // Equal distances count: the order of pairs decides among them.
  if (beyond * beyond > query.limitSquared) return;
  Find(left ? middle + 1 : first, left ? last : middle, query);
}

void PointTree::ForEachWithin(const Box3& box,
                              const std::function<void(const Point&)>& visit) const {
  Collect(0, m_points.size(), box, visit);
}

void PointTree::Collect(std::size_t first, std::size_t last, const Box3& box,
                        const std::function<void(const Point&)>& visit) const {
  if (first == last) return;
  const std::size_t middle = first + (last - first) / 2;
  const int axis = m_axis[middle];
  const Point& point = m_points[middle];
  if (box.Contains(point.place)) visit(point);
  if (box.low[axis] <= point.place[axis]) Collect(first, middle, box, visit);
  if (box.high[axis] >= point.place[axis]) Collect(middle + 1, last, box, visit);
}

}  // namespace kernel
