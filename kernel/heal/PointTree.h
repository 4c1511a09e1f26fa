#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "kernel/common/Box3.h"

namespace kernel {

// A k-d tree over points, each with a number of its owner's.
class PointTree {
 public:
  using Index = std::uint32_t;

  struct Point {
    Vec3 place;
    Index number;
  };

  explicit PointTree(std::vector<Point> points);

  // The accepted point whose pair with `from` comes first by distance, then by lower and by upper
  // number, among those closer than `limit`. An order of pairs: two points that are each other's
  // nearest exist whenever any pair does.
  std::optional<Point> Nearest(const Point& from, double limit,
                               const std::function<bool(Index)>& accepts) const;

  void ForEachWithin(const Box3& box, const std::function<void(const Point&)>& visit) const;

 private:
  struct Query;

  void Build(std::size_t first, std::size_t last);
  void Find(std::size_t first, std::size_t last, Query& query) const;
  void Collect(std::size_t first, std::size_t last, const Box3& box,
               const std::function<void(const Point&)>& visit) const;

  // The middle point of a range splits it; its axis lies at the same place of m_axis.
  std::vector<Point> m_points;
  std::vector<std::uint8_t> m_axis;
};

}  // namespace kernel
