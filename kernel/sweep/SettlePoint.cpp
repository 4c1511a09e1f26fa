#include "kernel/sweep/SettlePoint.h"

#include <algorithm>
#include <cmath>

#include "kernel/sweep/PlaneMeeting.h"

namespace kernel {
namespace {

constexpr int kMostSteps = 24;
constexpr double kLeastStep = 0.02;  // of the reach

class Settling {
 public:
  Settling(const LocalSolid& solid, const Vec3& start, const SettleGoal& goal)
      : m_solid(solid),
        m_start(start),
        m_reach(goal.reach),
        m_exact(goal.exact),
        m_active(goal.planes),
        m_kept(goal.planes.size()) {}

  // The surfaces that the point has to be on are found one after the other: each time the one that
  // is violated most joins, and the oldest that may gives way when they meet nowhere near.
  std::optional<Vec3> Find() {
    Vec3 point = m_start;
    for (int step = 0; step < kMostSteps; ++step) {
      const OffSurface off = m_solid.HowFarOff(point);
      if (std::abs(off.distance) <= m_exact) return point;
      if (!std::isfinite(off.distance)) return std::nullopt;
      Join(off.maker);
      const std::optional<Vec3> met = Meet(point);
      if (!met || Length(*met - m_start) > m_reach) return std::nullopt;
      point = *met;
    }
    return std::nullopt;
  }

 private:
  void Join(Generator maker) {
    if (std::find(m_active.begin(), m_active.end(), maker) != m_active.end()) return;
    m_active.push_back(maker);
    if (m_active.size() > 3) GiveWay();
  }

  // False when there is nothing left that may.
  bool GiveWay() {
    if (m_active.size() <= m_kept + 1) return false;
    m_active.erase(m_active.begin() + static_cast<std::ptrdiff_t>(m_kept));
    return true;
  }

  // Where the active surfaces' tangent planes meet, nearest to the start.
  std::optional<Vec3> Meet(const Vec3& point) {
    do {
      std::array<TangentPlane, 3> planes;
      const std::size_t count = std::min<std::size_t>(3, m_active.size());
      for (std::size_t i = 0; i < count; ++i) planes[i] = m_solid.From(m_active[i], point).plane;
      const std::optional<Vec3> met = MeetPlanes({planes.data(), count}, m_start);
      if (met && Length(*met - m_start) <= m_reach) return met;
    } while (GiveWay());
    return std::nullopt;
  }

  const LocalSolid& m_solid;
  Vec3 m_start;
  double m_reach, m_exact;
  std::vector<Generator> m_active;  // the kept planes first
  std::size_t m_kept = 0;
};

}  // namespace

std::vector<Generator> PlanesUnder(const LocalSolid& solid, const Vec3& point, double exact) {
  std::vector<Generator> planes;
  solid.PlanesAt(point, exact, planes);
  if (planes.size() > 3) planes.resize(3);
  return planes;
}

std::optional<Vec3> SettlePoint(const LocalSolid& solid, const Vec3& point,
                                const SettleGoal& goal) {
  return Settling(solid, point, goal).Find();
}

std::optional<Vec3> SettleAlong(const LocalSolid& solid, const Vec3& point, const Vec3& outward,
                                const SettleGoal& goal) {
  Vec3 way = outward;
  for (const Generator plane : goal.planes) {
    const Vec3 normal = solid.From(plane, point).plane.normal;
    way -= normal * Dot(normal, way);
  }
  way = Normalised(way);
  if (way == Vec3{}) return std::nullopt;
  const double start = solid.HowFarOff(point).distance;
  if (start > 0) way = -way;
  double gone = std::abs(start);
  while (gone <= goal.reach) {
    const double off = solid.HowFarOff(point + way * gone).distance;
    if (!std::isfinite(off)) return std::nullopt;
    if (std::signbit(off) != std::signbit(start)) {
      // Past a ridge the point is in both tools, and settles on it.
      return SettlePoint(solid, point + way * gone, goal);
    }
    gone += std::max(std::abs(off), kLeastStep * goal.reach);
  }
  return std::nullopt;
}

}  // namespace kernel
