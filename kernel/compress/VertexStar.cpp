#include "kernel/compress/VertexStar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "kernel/compress/SegmentDistance.h"
#include "kernel/sweep/NearestOnTriangle.h"

namespace kernel {
namespace {

// A vertex with more edges costs more to look at than merging it gains.
constexpr std::size_t kMostEdges = 64;
// A facet turns by no more than this in one step.
constexpr double kLeastTurnCosine = 0.5;
// Height over longest edge that a facet may sink to where the ones before it are better.
constexpr double kLeastShape = 0.02;
// What a long way costs, against the distance from the planes; decides in flat places.
constexpr double kWayCost = 1e-6;

// What is measured at points only stays this far below the tolerance, so that the proof succeeds.
constexpr double kEstimateShare = 0.95;

}  // namespace

PlannedCollapse VertexStar::Plan(Index vertex) {
  if (!Collect(vertex) || !MayGo()) return {};
  LookAtFacets();
  std::vector<std::pair<double, std::size_t>> targets;
  if (m_features.empty()) {
    for (std::size_t i = 0; i < Count(); ++i) targets.emplace_back(CostOf(i), i);
  } else {
    for (const std::size_t i : m_features) targets.emplace_back(CostOf(i), i);
  }
  if (!GatherCarried()) return {};
  LookBeyond();
  std::sort(targets.begin(), targets.end());
  for (const auto& [cost, to] : targets) {
    if (IsSound(to) && StaysNear(to) && m_mesh.CanCollapse(m_halves[to])) {
      return {m_halves[to], cost};
    }
  }
  return {};
}

double VertexStar::LeastCost(Index vertex) {
  Collect(vertex);
  LookAtFacets();
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < Count(); ++i) least = std::min(least, CostOf(i));
  return least;
}

bool VertexStar::Collect(Index vertex) {
  m_vertex = vertex;
  m_center = m_mesh.At(vertex);
  m_halves.clear();
  m_ring.clear();
  m_features.clear();
  const Index first = m_mesh.Out(vertex);
  Index half = first;
  do {
    if (m_merged.features.Is(half)) m_features.push_back(m_halves.size());
    m_halves.push_back(half);
    m_ring.push_back(m_mesh.At(m_mesh.Target(half)));
    half = m_mesh.Around(half);
  } while (half != first && m_halves.size() <= kMostEdges);
  return half == first;
}

// A vertex inside a smooth piece, or on a line between two of them that is straight there.
bool VertexStar::MayGo() const {
  if (m_merged.shares[m_vertex] == 0) return false;
  for (const Index half : m_halves) {
    if (m_merged.shares[m_mesh.Target(half)] == 0) return false;
  }
  return m_features.empty() || (m_features.size() == 2 && IsStraight());
}

bool VertexStar::IsStraight() const {
  const Vec3 a = m_ring[m_features[0]] - m_center;
  const Vec3 b = m_ring[m_features[1]] - m_center;
  const Vec3 along = Normalised(b - a);
  const double moved = std::max(m_merged.features.Moved(m_halves[m_features[0]]),
                                m_merged.features.Moved(m_halves[m_features[1]]));
  return Dot(a, along) < 0 && Dot(b, along) > 0 &&
         moved + Length(Cross(a, along)) <= m_limits.border;
}

void VertexStar::LookAtFacets() {
  m_normals.resize(Count());
  m_areas.resize(Count());
  m_worstShape = kLeastShape;
  for (std::size_t i = 0; i < Count(); ++i) {
    const Vec3 b = Ring(i) - m_center;
    const Vec3 c = Ring(i + 1) - m_center;
    const Vec3 normal = Cross(b, c);
    m_areas[i] = Length(normal);
    m_normals[i] = m_areas[i] > 0 ? normal / m_areas[i] : normal;
    const double longest = std::max({LengthSquared(b), LengthSquared(c), LengthSquared(c - b)});
    m_worstShape = std::min(m_worstShape, m_areas[i] / longest);
  }
}

// The normals of the facets across the ring.
void VertexStar::LookBeyond() {
  m_beyond.resize(Count());
  for (std::size_t i = 0; i < Count(); ++i) {
    const Index beyond = m_mesh.Twin(HalfEdgeMesh::Next(m_halves[i]));
    const Vec3& third = m_mesh.At(m_mesh.Target(HalfEdgeMesh::Next(beyond)));
    m_beyond[i] = Normalised(Cross(Ring(i) - Ring(i + 1), third - Ring(i + 1)));
  }
}

// False when one of the points must not be touched.
bool VertexStar::GatherCarried() {
  m_carried.clear();
  bool mayTouch = true;
  const auto add = [&](Index point, std::size_t facet) {
    const auto [a, b] = m_merged.carried.EndsOf(point);
    const float share = std::min(m_merged.shares[a], m_merged.shares[b]);
    const double limit = kEstimateShare * m_limits.tolerance * static_cast<double>(share);
    mayTouch = mayTouch && limit > 0;
    m_carried.push_back({m_merged.carried.At(m_mesh, point), limit * limit, facet});
  };
  add(m_vertex, 0);
  for (std::size_t i = 0; i < Count(); ++i) {
    m_merged.carried.ForEachOf(m_halves[i] / 3, [&](Index point) { add(point, i); });
  }
  return mayTouch;
}

// The mean square distance of the new place from the planes of the facets around the old one.
//
// Source: Garland and Heckbert, Surface simplification using quadric error metrics (1997), without
// the sums of earlier steps, as it only orders what is measured otherwise.
double VertexStar::CostOf(std::size_t to) const {
  const Vec3 way = m_ring[to] - m_center;
  double sum = 0;
  double area = 0;
  for (std::size_t i = 0; i < Count(); ++i) {
    const double above = Dot(m_normals[i], way);
    sum += m_areas[i] * above * above;
    area += m_areas[i];
  }
  return (area > 0 ? sum / area : 0) + kWayCost * LengthSquared(way);
}

bool VertexStar::IsSound(std::size_t to) { return KeepsShape(to) && KeepsSharpness(to); }

// No facet turns over, loses its height or becomes a needle.
bool VertexStar::KeepsShape(std::size_t to) {
  m_after.resize(Count());
  const Vec3& a = m_ring[to];
  for (std::size_t i = 0; i < Count(); ++i) {
    if (Vanishes(i, to)) continue;
    const Vec3& b = Ring(i);
    const Vec3& c = Ring(i + 1);
    const Vec3 normal = Cross(b - a, c - a);
    const double area = Length(normal);
    const double longest =
        std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)});
    if (area < m_worstShape * longest || area <= m_limits.least * std::sqrt(longest)) return false;
    m_after[i] = normal / area;
    if (Dot(m_after[i], m_normals[i]) < kLeastTurnCosine) return false;
  }
  return true;
}

// Whether an edge between facets of these normals may stand for `half`: it is as sharp as before.
bool VertexStar::IsAsSharp(Index half, const Vec3& normal, const Vec3& other) const {
  const bool isFeature = m_merged.features.Is(half);
  const bool isBorder =
      isFeature && m_mesh.Colour(half / 3) != m_mesh.Colour(m_mesh.Twin(half) / 3);
  return isBorder || IsSharp(normal, other) == isFeature;
}

bool VertexStar::KeepsSharpness(std::size_t to) const {
  // The facets that vanish leave those across their ring edges to their neighbours.
  const std::size_t next = (to + 1) % Count();
  const std::size_t last = Before(Before(to));
  const std::array<std::array<std::size_t, 2>, 2> closed = {{{to, next}, {Before(to), last}}};
  for (const auto& [gone, stays] : closed) {
    const Index ring = HalfEdgeMesh::Next(m_halves[gone]);
    if (!IsAsSharp(ring, m_beyond[gone], m_after[stays])) return false;
  }
  for (std::size_t i = 0; i < Count(); ++i) {
    if (Vanishes(i, to)) continue;
    if (!IsAsSharp(HalfEdgeMesh::Next(m_halves[i]), m_after[i], m_beyond[i])) return false;
    const std::size_t before = Before(i);
    if (Vanishes(before, to)) continue;
    if (!IsAsSharp(m_halves[i], m_after[i], m_after[before])) return false;
  }
  return true;
}

bool VertexStar::StaysNear(std::size_t to) const {
  return std::all_of(m_carried.begin(), m_carried.end(),
                     [&](const Carried& carried) { return IsNear(carried, to); }) &&
         CrossesNear(to);
}

bool VertexStar::IsNear(const Carried& carried, std::size_t to) const {
  // Most points are near the facet that takes the place of theirs.
  for (std::size_t step = 0; step < Count(); ++step) {
    const std::size_t i = (carried.facet + step) % Count();
    if (Vanishes(i, to)) continue;
    const Vec3 nearest = NearestOnTriangle({m_ring[to], Ring(i), Ring(i + 1)}, carried.point).point;
    if (LengthSquared(nearest - carried.point) <= carried.limitSquared) return true;
  }
  return false;
}

// Where new edges pass over old ones; vertices do not tell how far they are apart there.
bool VertexStar::CrossesNear(std::size_t to) const {
  const Vec3& a = m_ring[to];
  const double limit = m_limits.tolerance * m_limits.tolerance;
  for (std::size_t i = 0; i < Count(); ++i) {
    if (Vanishes(i, to) || i == (to + 1) % Count()) continue;
    const Vec3& b = m_ring[i];
    const Vec3 aside = Cross(m_after[i], b - a);
    const double side = Dot(aside, m_center - a);
    for (std::size_t j = 0; j < Count(); ++j) {
      if (j == i || j == to || side * Dot(aside, m_ring[j] - a) >= 0) continue;
      if (SegmentDistanceSquared(a, b, m_center, m_ring[j]) > limit) return false;
    }
  }
  return true;
}

}  // namespace kernel
