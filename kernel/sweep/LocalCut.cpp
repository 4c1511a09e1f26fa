#include "kernel/sweep/LocalCut.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSamePlane = 0.99999;

// How much a linear function of this slope changes from a box's centre to its corners.
double Sway(const Vec3& slope, const Vec3& half) {
  return std::abs(slope.x) * half.x + std::abs(slope.y) * half.y + std::abs(slope.z) * half.z;
}

}  // namespace

LocalCut::LocalCut(const CutMakers& makers, std::span<const std::uint32_t> moves,
                   std::span<const std::uint32_t> facets, const Box3& box)
    : m_makers(makers), m_box(box), m_centre((box.low + box.high) / 2) {
  std::vector<Candidate> candidates;
  candidates.reserve(moves.size());
  for (const std::uint32_t move : moves) {
    candidates.push_back({move, makers.Moves().Swept(move)});
  }
  Keep(candidates);
  KeepFacets(facets);
}

LocalCut::LocalCut(const LocalCut& wider, const Box3& box)
    : m_makers(wider.m_makers), m_box(box), m_centre((box.low + box.high) / 2) {
  std::vector<Candidate> candidates;
  const Vec3 half = (box.high - box.low) / 2;
  const Vec3 step = m_centre - wider.m_centre;
  double least = kInfinity;
  for (const Bound& bound : wider.m_bounds) least = std::min(least, bound.distance);
  // No distance changes faster than the way that is gone.
  const double most = least + Length(step) + Length(half);
  for (std::size_t i = 0; i < wider.m_bounds.size(); ++i) {
    const Bound& bound = wider.m_bounds[i];
    if (bound.At(step) - Sway(bound.slope, half) <= most) {
      candidates.push_back(wider.m_candidates[i]);
    }
  }
  Keep(candidates);
  KeepFacets(wider.m_facets);
}

void LocalCut::Keep(const std::vector<Candidate>& candidates) {
  const Vec3 half = (m_box.high - m_box.low) / 2;
  const double reach = Length(half);
  double least = 2 * reach;  // a tool further away from the centre has no say
  std::vector<Bound> bounds;
  bounds.reserve(candidates.size());
  for (const Candidate& candidate : candidates) {
    const NearestBoundary nearest = candidate.swept.Nearest(m_centre);
    bounds.push_back({nearest.distance, nearest.normal});
    least = std::min(least, nearest.distance);
  }
  for (std::size_t i = 0; i < bounds.size(); ++i) {
    if (bounds[i].distance - Sway(bounds[i].slope, half) > least + reach) continue;
    m_candidates.push_back(candidates[i]);
    m_bounds.push_back(bounds[i]);
  }
}

void LocalCut::KeepFacets(std::span<const std::uint32_t> facets) {
  const Vec3 half = (m_box.high - m_box.low) / 2;
  for (const std::uint32_t facet : facets) {
    const StockMesh& mesh = m_makers.Stock().Mesh();
    Box3 box;
    for (const std::uint32_t v : mesh.facets[facet].vertices) box.Include(mesh.vertices[v]);
    if (Intersection(box, m_box).IsEmpty()) continue;
    const Vec3& normal = m_makers.Stock().NormalOf(facet);
    const Vec3& corner = mesh.vertices[mesh.facets[facet].vertices[0]];
    if (std::abs(Dot(normal, m_centre - corner)) <= Sway(normal, half)) m_facets.push_back(facet);
  }
}

std::optional<NearestMaker> LocalCut::NearestTool(const Vec3& point) const {
  if (m_candidates.empty()) return std::nullopt;
  const Vec3 step = point - m_centre;
  std::size_t first = 0;
  double lowest = kInfinity;
  for (std::size_t i = 0; i < m_bounds.size(); ++i) {
    const double low = m_bounds[i].At(step);
    if (low < lowest) {
      lowest = low;
      first = i;
    }
  }
  NearestBoundary nearest = m_candidates[first].swept.Nearest(point);
  std::size_t found = first;
  const double rounding = 1e-13 * (1 + Length(m_box.high - m_box.low));
  for (std::size_t i = 0; i < m_candidates.size(); ++i) {
    if (i == first || m_bounds[i].At(step) > nearest.distance + rounding) continue;
    const NearestBoundary other = m_candidates[i].swept.Nearest(point);
    const bool later = i > found;
    if (other.distance < nearest.distance - rounding ||
        (later && other.distance <= nearest.distance + rounding)) {
      nearest = other;
      found = i;
    }
  }
  return NearestMaker{nearest.distance,
                      Generator::Move(m_candidates[found].move),
                      {point - nearest.normal * nearest.distance, -nearest.normal}};
}

std::optional<NearestMaker> LocalCut::NearestStock(const Vec3& point) const {
  const std::optional<NearestOnStock> nearest = m_makers.Stock().Nearest(point, m_facets);
  if (!nearest) return std::nullopt;
  return NearestMaker{nearest->distance,
                      Generator::StockFacet(nearest->facet),
                      {nearest->point, m_makers.Stock().NormalOf(nearest->facet)}};
}

OffSurface LocalCut::HowFarOff(const Vec3& point) const {
  const std::optional<NearestMaker> tool = NearestTool(point);
  const std::optional<NearestMaker> stock = NearestStock(point);
  OffSurface off{-kInfinity, {}};
  if (tool) off = {-tool->distance, tool->maker};
  if (stock && stock->distance >= off.distance) off = {stock->distance, stock->maker};
  return off;
}

void LocalCut::PlanesAt(const Vec3& point, double reach, std::vector<Generator>& planes) const {
  for (const std::uint32_t facet : m_facets) {
    const Vec3& normal = m_makers.Stock().NormalOf(facet);
    const std::optional<NearestOnStock> nearest =
        m_makers.Stock().Nearest(point, std::span(&facet, 1));
    if (std::abs(nearest->distance) > reach) continue;
    const bool known = std::any_of(planes.begin(), planes.end(), [&](Generator plane) {
      return Dot(m_makers.Stock().NormalOf(plane.Number()), normal) > kSamePlane;
    });
    if (!known) planes.push_back(Generator::StockFacet(facet));
  }
}

bool LocalCut::HasColourNear(const Vec3& point, std::uint8_t colour, double reach) const {
  for (std::size_t i = 0; i < m_bounds.size(); ++i) {
    if (m_bounds[i].At(point - m_centre) > reach) continue;
    const Candidate& candidate = m_candidates[i];
    if (m_makers.ColourOf(Generator::Move(candidate.move)) != colour) continue;
    if (std::abs(candidate.swept.SignedDistance(point)) <= reach) return true;
  }
  return std::any_of(m_facets.begin(), m_facets.end(), [&](std::uint32_t facet) {
    return m_makers.ColourOf(Generator::StockFacet(facet)) == colour &&
           std::abs(m_makers.Stock().Nearest(point, std::span(&facet, 1))->distance) <= reach;
  });
}

}  // namespace kernel
