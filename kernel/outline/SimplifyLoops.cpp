#include "kernel/outline/SimplifyLoops.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "kernel/outline/EdgeTree.h"
#include "kernel/outline/MeetingEdges.h"

namespace kernel {
namespace {

constexpr std::size_t kTellInterval = 1U << 16;

double SquaredDistance(const Point2& a, const Point2& b) {
  return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

double SquaredDistanceToSegment(const Point2& point, const Point2& a, const Point2& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double squared = dx * dx + dy * dy;
  if (squared == 0) return SquaredDistance(point, a);
  const double along = (point.x - a.x) * dx + (point.y - a.y) * dy;
  const double t = std::clamp(along / squared, 0.0, 1.0);
  return SquaredDistance(point, {a.x + t * dx, a.y + t * dy});
}

class LoopSimplifier {
 public:
  LoopSimplifier(const Loop& loop, double distance, const std::function<void()>& tell)
      : m_loop(loop), m_tell(tell), m_limit(distance * distance), m_kept(loop.size(), false) {}

  Loop Run() {
    const std::size_t far = FarthestFromStart();
    m_kept[0] = m_kept[far] = true;
    Keep(0, far);
    Keep(far, m_loop.size());
    if (std::count(m_kept.begin(), m_kept.end(), true) < 3) KeepOneBeside(far);
    Loop left;
    for (std::size_t i = 0; i < m_loop.size(); ++i) {
      if (m_kept[i]) left.push_back(m_loop[i]);
    }
    const bool turned = (DoubledArea(left) > 0) != (DoubledArea(m_loop) > 0);
    return turned || DoubledArea(left) == 0 ? m_loop : left;
  }

 private:
  const Point2& At(std::size_t i) const { return m_loop[i == m_loop.size() ? 0 : i]; }

  std::size_t FarthestFromStart() const {
    std::size_t far = 1;
    for (std::size_t i = 2; i < m_loop.size(); ++i) {
      if (SquaredDistance(m_loop[i], m_loop[0]) > SquaredDistance(m_loop[far], m_loop[0])) far = i;
    }
    return far;
  }

  // The point strictly between `begin` and `end` that is farthest from the straight line.
  std::pair<std::size_t, double> Farthest(std::size_t begin, std::size_t end) const {
    std::size_t far = begin;
    double most = -1;
    for (std::size_t i = begin + 1; i < end; ++i) {
      const double squared = SquaredDistanceToSegment(m_loop[i], At(begin), At(end));
      if (squared <= most) continue;
      most = squared;
      far = i;
    }
    return {far, most};
  }

  void Keep(std::size_t begin, std::size_t end) {
    std::vector<std::pair<std::size_t, std::size_t>> open{{begin, end}};
    while (!open.empty()) {
      const auto [from, to] = open.back();
      open.pop_back();
      TellAfter(to - from);
      const auto [far, squared] = Farthest(from, to);
      if (squared <= m_limit) continue;
      m_kept[far] = true;
      open.emplace_back(from, far);
      open.emplace_back(far, to);
    }
  }

  void TellAfter(std::size_t points) {
    m_looked += points;
    if (m_looked < kTellInterval) return;
    m_looked = 0;
    m_tell();
  }

  void KeepOneBeside(std::size_t far) {
    const auto before = Farthest(0, far), behind = Farthest(far, m_loop.size());
    m_kept[before.second >= behind.second ? before.first : behind.first] = true;
  }

  const Loop& m_loop;
  const std::function<void()>& m_tell;
  std::size_t m_looked = 0;  // points since the last time
  double m_limit;
  std::vector<bool> m_kept;
};

// For each loop whether one of its edges crosses another edge.
std::vector<bool> Crossing(const std::vector<Loop>& loops, const std::function<void()>& tell) {
  std::vector<PlaneEdge> edges;
  std::vector<std::size_t> loopOf;
  for (std::size_t l = 0; l < loops.size(); ++l) {
    for (std::size_t i = 0; i < loops[l].size(); ++i) {
      edges.push_back({loops[l][i], loops[l][i + 1 == loops[l].size() ? 0 : i + 1], {}});
      loopOf.push_back(l);
    }
  }
  std::vector<bool> crossing(loops.size(), false);
  const EdgeTree tree(edges, tell);
  std::size_t met = 0;
  for (std::uint32_t i = 0; i < edges.size(); ++i) {
    tree.ForEachMeeting(Box2::Of(edges[i]), [&](std::uint32_t j) {
      // Itself, at least.
      if (++met % kTellInterval == 0) tell();
      if (j <= i || !CrossProperly(edges[i], edges[j])) return;
      crossing[loopOf[i]] = crossing[loopOf[j]] = true;
    });
  }
  return crossing;
}

}  // namespace

std::vector<Loop> SimplifyLoops(const std::vector<Loop>& loops, double distance,
                                const std::function<void()>& tell) {
  std::vector<Loop> simple;
  simple.reserve(loops.size());
  for (const Loop& loop : loops) simple.push_back(LoopSimplifier(loop, distance, tell).Run());
  // Putting one back may bring a new crossing, with another loop that is still simplified.
  for (bool changed = true; changed;) {
    changed = false;
    const std::vector<bool> crossing = Crossing(simple, tell);
    for (std::size_t l = 0; l < loops.size(); ++l) {
      if (!crossing[l] || simple[l].size() == loops[l].size()) continue;
      simple[l] = loops[l];
      changed = true;
    }
  }
  return simple;
}

}  // namespace kernel
