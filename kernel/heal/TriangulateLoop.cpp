#include "kernel/heal/TriangulateLoop.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kernel {
namespace {

// Areas this close count as equal; what is left of a plane loop's area after rounding is smaller.
constexpr double kSameArea = 1e-10;

struct Cost {
  double area = std::numeric_limits<double>::infinity();
  double sides = 0;  // squared

  bool IsLessThan(const Cost& other) const {
    const double slack = kSameArea * std::max(area, other.area);
    if (area < other.area - slack || !std::isfinite(other.area)) return area < other.area;
    return area <= other.area + slack && sides < other.sides;
  }
  friend Cost operator+(const Cost& a, const Cost& b) {
    return {a.area + b.area, a.sides + b.sides};
  }
};

class Programme {
 public:
  Programme(const std::vector<Vec3>& points, double least,
            const std::function<bool(std::size_t, std::size_t)>& mayJoin)
      : m_points(points),
        m_least(least),
        m_mayJoin(mayJoin),
        m_count(points.size()),
        m_cost(m_count * m_count),
        m_split(m_count * m_count, 0) {}

  LoopTriangles Run() {
    for (std::size_t i = 0; i + 1 < m_count; ++i) m_cost[At(i, i + 1)] = {0, 0};
    for (std::size_t span = 2; span < m_count; ++span) {
      for (std::size_t i = 0; i + span < m_count; ++i) Settle(i, i + span);
    }
    if (!std::isfinite(m_cost[At(0, m_count - 1)].area)) return {};
    Collect(0, m_count - 1);
    return m_triangles;
  }

 private:
  std::size_t At(std::size_t i, std::size_t k) const { return i * m_count + k; }

  Cost TriangleCost(std::size_t i, std::size_t j, std::size_t k) const {
    const Vec3 a = m_points[j] - m_points[i];
    const Vec3 b = m_points[k] - m_points[j];
    const Vec3 c = m_points[i] - m_points[k];
    const double twice = Length(Cross(a, b));
    const double longest = std::max({LengthSquared(a), LengthSquared(b), LengthSquared(c)});
    if (!(twice * twice > m_least * m_least * longest)) return {};
    return {twice / 2, LengthSquared(c)};
  }

  void Settle(std::size_t i, std::size_t k) {
    const bool isAcross = k - i + 1 < m_count;
    if (isAcross && !m_mayJoin(i, k)) return;
    Cost best;
    for (std::size_t j = i + 1; j < k; ++j) {
      const Cost parts = m_cost[At(i, j)] + m_cost[At(j, k)];
      if (!std::isfinite(parts.area)) continue;
      const Cost whole = parts + TriangleCost(i, j, k);
      if (!whole.IsLessThan(best)) continue;
      best = whole;
      m_split[At(i, k)] = static_cast<std::uint32_t>(j);
    }
    m_cost[At(i, k)] = best;
  }

  void Collect(std::size_t i, std::size_t k) {
    if (k - i < 2) return;
    const std::size_t j = m_split[At(i, k)];
    m_triangles.push_back({static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j),
                           static_cast<std::uint32_t>(k)});
    Collect(i, j);
    Collect(j, k);
  }

  const std::vector<Vec3>& m_points;
  const double m_least;
  const std::function<bool(std::size_t, std::size_t)>& m_mayJoin;
  const std::size_t m_count;
  std::vector<Cost> m_cost;  // of spanning the points i .. k with the chord from i to k
  std::vector<std::uint32_t> m_split;
  LoopTriangles m_triangles;
};

}  // namespace

LoopTriangles TriangulateLoop(const std::vector<Vec3>& points, double least,
                              const std::function<bool(std::size_t, std::size_t)>& mayJoin) {
  if (points.size() < 3) return {};
  return Programme(points, least, mayJoin).Run();
}

}  // namespace kernel
