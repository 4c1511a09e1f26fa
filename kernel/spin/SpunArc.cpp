#include "kernel/spin/SpunArc.h"

#include <algorithm>
#include <cmath>

namespace kernel {
namespace {

constexpr int kMostHalvings = 14;
// An arc that comes this near to the axis, measured against its radius, is two straight pieces.
constexpr double kLeastShare = 1e-15;

}  // namespace

Point2 Spun(const Vec3& place) {
  // Not std::hypot, which is not the same in every run-time library.
  return {place.x, std::sqrt(place.y * place.y + place.z * place.z)};
}

SpunArc::SpunArc(const Vec3& from, const Vec3& to) : m_from(from), m_to(to) {
  const double dy = to.y - from.y, dz = to.z - from.z;
  const double squared = dy * dy + dz * dz;
  m_speed = std::sqrt(squared);
  m_nearest = squared > 0 ? -(from.y * dy + from.z * dz) / squared : 0;
  m_least = squared > 0 ? std::abs(from.y * dz - from.z * dy) / m_speed : 0;
}

Vec3 SpunArc::PlaceAt(double t) const {
  if (t == 0) return m_from;
  if (t == 1) return m_to;
  return m_from + t * (m_to - m_from);
}

Point2 SpunArc::At(double t) const { return Spun(PlaceAt(t)); }

SpunArc::ArcPoint SpunArc::ArcPointAt(double t) const {
  const double u = m_speed * (t - m_nearest);
  return {u, std::sqrt(m_least * m_least + u * u)};
}

Point2 SpunArc::PlaneAt(const ArcPoint& point) const {
  return {m_from.x + (m_nearest + point.u / m_speed) * (m_to.x - m_from.x), point.r};
}

void SpunArc::AddPieces(double begin, double end, bool below, double tolerance,
                        std::vector<Point2>& points) const {
  points.push_back(At(begin));
  if (m_nearest > begin && m_nearest < end) {
    AddHalf(begin, m_nearest, below, tolerance, points);
    points.push_back(At(m_nearest));
    AddHalf(m_nearest, end, below, tolerance, points);
  } else {
    AddHalf(begin, end, below, tolerance, points);
  }
  points.push_back(At(end));
}

void SpunArc::AddHalf(double begin, double end, bool below, double tolerance,
                      std::vector<Point2>& points) const {
  const ArcPoint a = ArcPointAt(begin), b = ArcPointAt(end);
  const bool straight = m_from.x == m_to.x || m_least <= kLeastShare * std::max(a.r, b.r);
  if (!straight) Divide(a, b, below, tolerance, 0, points);
}

void SpunArc::Divide(const ArcPoint& a, const ArcPoint& b, bool below, double tolerance, int depth,
                     std::vector<Point2>& points) const {
  // Both on one side of the nearest point, so that nothing cancels:
  // r - |u| = least^2 / (r + |u|), and cosh of the whole angle is (ra rb - ua ub) / least^2.
  const double square = m_least * m_least;
  const double ua = std::abs(a.u), ub = std::abs(b.u);
  const double shortA = square / (a.r + ua), shortB = square / (b.r + ub);
  const double cosh = (ua * shortB + ub * shortA + shortA * shortB) / square;
  const double halfSquared = (1 + cosh) / 2, half = std::sqrt(halfSquared);
  const ArcPoint chord{(a.u + b.u) / 2, (a.r + b.r) / 2};
  const ArcPoint middle{chord.u / half, chord.r / half};
  // The widest gap between arc and chord, upright, and then square to the chord. Between arc and
  // tangents it is less.
  const double gap = square * (halfSquared - 1) / (half + 1) / middle.r;
  const double slope = middle.u / middle.r * m_speed / (m_to.x - m_from.x);
  if (gap <= tolerance * std::sqrt(1 + slope * slope) || depth == kMostHalvings) {
    if (below) points.push_back(PlaneAt({chord.u / halfSquared, chord.r / halfSquared}));
    return;
  }
  Divide(a, middle, below, tolerance, depth + 1, points);
  if (!below) points.push_back(PlaneAt(middle));
  Divide(middle, b, below, tolerance, depth + 1, points);
}

}  // namespace kernel
