#include "kernel/offset/PlaceOnOffset.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "kernel/sweep/PlaneMeeting.h"
#include "kernel/sweep/SettlePoint.h"

namespace kernel {
namespace {

constexpr int kMostSteps = 60;
constexpr double kCloseShare = 0.01;  // of the tolerance
// Of the distance between an edge's ends: a new vertex is no further from the middle, one on a
// sharp crease that stands over the edge no further than the second.
constexpr double kAside = 0.45;
constexpr double kCreaseAside = 3;
// An edge that is off by less than this share of its length bridges no crease worth a search.
constexpr double kSmooth = 0.04;
// Pieces that turn by less than about 11 degrees between two vertices need no crease.
constexpr double kCrease = 0.98;

// From body to body, each time onto the surface of the one that is violated most: where many bodies
// meet at small angles, this comes to rest although no three of them decide the place.
std::optional<Vec3> StepOnto(const LocalOffset& solid, const Vec3& start,
                             const OffsetLimits& limits) {
  Vec3 point = start;
  for (int step = 0; step < kMostSteps; ++step) {
    const OffSurface off = solid.HowFarOff(point);
    if (std::abs(off.distance) <= kCloseShare * limits.tolerance) return point;
    const TangentPlane plane = solid.From(off.maker, point).plane;
    point -= plane.normal * Dot(plane.normal, point - plane.point);
    if (Length(point - start) > limits.reach) break;
  }
  return std::nullopt;
}

double WorstHalf(const LocalOffset& solid, const Vec3& from, const Vec3& at, const Vec3& to) {
  return std::max(std::abs(solid.HowFarOff((from + at) / 2).distance),
                  std::abs(solid.HowFarOff((at + to) / 2).distance));
}

}  // namespace

std::optional<Vec3> PlaceOnOffset(const LocalOffset& solid, const Vec3& point,
                                  const OffsetLimits& limits) {
  const std::optional<Vec3> met = SettlePoint(solid, point, {{}, limits.reach, limits.exact});
  return met ? met : StepOnto(solid, point, limits);
}

std::optional<PlaceAlongEdge> PlaceOnEdge(const LocalOffset& solid, const Vec3& from,
                                          const Vec3& to, const OffsetLimits& limits) {
  const Vec3 middle = (from + to) / 2;
  std::optional<Vec3> best;
  bool isCrease = false;
  double left = std::numeric_limits<double>::infinity();
  const auto consider = [&](const Vec3& start, double aside, bool crease) {
    OffsetLimits near = limits;
    near.reach = aside * Length(to - from);
    if (Length(start - middle) > near.reach) return;
    const std::optional<Vec3> at = PlaceOnOffset(solid, start, near);
    if (!at || Length(*at - middle) > near.reach) return;
    const double worst = WorstHalf(solid, from, *at, to);
    if (worst >= left) return;
    left = worst;
    best = at;
    isCrease = crease;
  };
  const double off = std::abs(solid.HowFarOff(middle).distance);
  if (off < kSmooth * Length(to - from)) return PlaceAboveMiddle(solid, from, to, limits);
  consider(middle, kAside, false);
  const std::array<TangentPlane, 2> ends = {solid.From(solid.HowFarOff(from).maker, from).plane,
                                            solid.From(solid.HowFarOff(to).maker, to).plane};
  if (Dot(ends[0].normal, ends[1].normal) < kCrease) {
    const std::optional<Vec3> met = MeetPlanes(ends, middle);
    if (met) consider(*met, kCreaseAside, true);
  }
  if (!best) return std::nullopt;
  return PlaceAlongEdge{*best, isCrease};
}

std::optional<PlaceAlongEdge> PlaceAboveMiddle(const LocalOffset& solid, const Vec3& from,
                                               const Vec3& to, const OffsetLimits& limits) {
  OffsetLimits near = limits;
  near.reach = kAside * Length(to - from);
  const std::optional<Vec3> at = PlaceOnOffset(solid, (from + to) / 2, near);
  if (!at) return std::nullopt;
  return PlaceAlongEdge{*at, false};
}

}  // namespace kernel
