#include "kernel/outline/MeetingEdges.h"

#include <cmath>

namespace kernel {
namespace {

// Above the relative error of a difference of two products of exact differences.
constexpr double kRounding = 4e-16;

}  // namespace

bool HasEnd(const PlaneEdge& edge, const Point2& point) {
  return SamePoint(edge.from, point) || SamePoint(edge.to, point);
}

int Side(const PlaneEdge& edge, const Point2& point) {
  // Most edges that meet share an end; the exact sum of nothing takes longest.
  if (HasEnd(edge, point)) return 0;
  const double left = (edge.to.x - edge.from.x) * (point.y - edge.from.y);
  const double right = (edge.to.y - edge.from.y) * (point.x - edge.from.x);
  const double bound = kRounding * (std::abs(left) + std::abs(right));
  if (left - right > bound) return 1;
  if (left - right < -bound) return -1;
  return OrientationSign(edge.from, edge.to, point);
}

bool CrossProperly(const PlaneEdge& a, const PlaneEdge& b) {
  return Side(a, b.from) * Side(a, b.to) < 0 && Side(b, a.from) * Side(b, a.to) < 0;
}

bool MeetBeyondEnds(const PlaneEdge& a, const PlaneEdge& b) {
  if (SamePoint(a.to, b.from) || SamePoint(b.to, a.from)) return false;
  if (SamePoint(a.from, b.from)) return Side(a, b.to) == 0;
  if (SamePoint(a.to, b.to)) return Side(a, b.from) == 0;
  const int bStarts = Side(a, b.from), bEnds = Side(a, b.to);
  if (bStarts * bEnds > 0 || Side(b, a.from) * Side(b, a.to) > 0) return false;
  if (bStarts != 0 || bEnds != 0) return true;
  // On one line.
  const Point2& laterStart = ComesBefore(a.from, b.from) ? b.from : a.from;
  const Point2& earlierEnd = ComesBefore(a.to, b.to) ? a.to : b.to;
  return ComesBefore(laterStart, earlierEnd);
}

}  // namespace kernel
