#include "kernel/sweep/SurfaceSurvey.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "kernel/common/Workers.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// How far off is worth a change, as a share of the tolerance.
constexpr double kVertexShare = 0.1;
constexpr double kMiddleShare = 0.8;
constexpr double kReach = 0.75;  // of the ray spacing
constexpr int kSamples = 8;      // along an edge that is off
// A new vertex leaves less than this share of what is off, or what the tolerance allows.
constexpr double kGain = 0.9;

// The places by block, in their order; those far from the surface are left out.
struct PlacesByBlock {
  std::vector<std::size_t> begin;
  std::vector<MeshPlace> places;

  std::span<const MeshPlace> Of(std::uint32_t block) const {
    return {places.data() + begin[block], begin[block + 1] - begin[block]};
  }
};

PlacesByBlock Sorted(const std::vector<MeshPlace>& places, const std::vector<std::uint32_t>& blocks,
                     std::size_t blockCount) {
  PlacesByBlock sorted;
  sorted.begin.assign(blockCount + 1, 0);
  for (const std::uint32_t block : blocks) {
    if (block != BlockGrid::kNone) ++sorted.begin[block + 1];
  }
  for (std::size_t b = 0; b < blockCount; ++b) sorted.begin[b + 1] += sorted.begin[b];
  std::vector<std::size_t> next(sorted.begin.begin(), sorted.begin.end() - 1);
  sorted.places.resize(sorted.begin.back());
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (blocks[i] != BlockGrid::kNone) sorted.places[next[blocks[i]]++] = places[i];
  }
  return sorted;
}

}  // namespace

std::vector<SurveyFinding> SurfaceSurvey::Of(const std::vector<MeshPlace>& places,
                                             const std::function<void(double)>& watch) const {
  std::vector<std::uint32_t> blocks(places.size());
  for (std::size_t i = 0; i < places.size(); ++i)
    blocks[i] = m_solid.Grid().BlockAt(Middle(places[i]));
  const PlacesByBlock sorted = Sorted(places, blocks, m_solid.Grid().Count());
  std::vector<std::uint32_t> busy;
  for (std::uint32_t block = 0; block < m_solid.Grid().Count(); ++block) {
    if (!sorted.Of(block).empty()) busy.push_back(block);
  }
  std::vector<std::vector<SurveyFinding>> found(busy.size());
  RunTasks(
      busy.size(), [&](std::size_t i) { found[i] = InBlock(busy[i], sorted.Of(busy[i])); },
      [&](std::size_t done) {
        watch(static_cast<double>(done) / static_cast<double>(busy.size()));
      });
  std::vector<SurveyFinding> all;
  for (const std::vector<SurveyFinding>& some : found) {
    all.insert(all.end(), some.begin(), some.end());
  }
  std::sort(all.begin(), all.end(),
            [](const SurveyFinding& a, const SurveyFinding& b) { return a.place < b.place; });
  return all;
}

Vec3 SurfaceSurvey::Middle(const MeshPlace& place) const {
  if (place.kind == MeshPlace::Kind::kVertex) return m_mesh.At(place.index);
  if (place.kind == MeshPlace::Kind::kEdge) return Along(place.index, 0.5);
  const Index half = 3 * place.index;
  return (m_mesh.At(m_mesh.Origin(half)) + m_mesh.At(m_mesh.Origin(half + 1)) +
          m_mesh.At(m_mesh.Origin(half + 2))) /
         3;
}

Vec3 SurfaceSurvey::Along(Index half, double share) const {
  const Vec3& from = m_mesh.At(m_mesh.Origin(half));
  return from + (m_mesh.At(m_mesh.Target(half)) - from) * share;
}

Vec3 SurfaceSurvey::NormalOf(Index facet) const {
  const Vec3& a = m_mesh.At(m_mesh.Origin(3 * facet));
  const Vec3& b = m_mesh.At(m_mesh.Origin(3 * facet + 1));
  const Vec3& c = m_mesh.At(m_mesh.Origin(3 * facet + 2));
  return Normalised(Cross(b - a, c - a));
}

Vec3 SurfaceSurvey::Outward(const MeshPlace& place) const {
  if (place.kind == MeshPlace::Kind::kFacet) return NormalOf(place.index);
  return Normalised(NormalOf(place.index / 3) + NormalOf(m_mesh.Twin(place.index) / 3));
}

std::vector<SurveyFinding> SurfaceSurvey::InBlock(std::uint32_t block,
                                                  std::span<const MeshPlace> places) const {
  const std::unique_ptr<BlockParts> solid = m_solid.InBlock(block);
  std::vector<SurveyFinding> findings;
  for (const MeshPlace& place : places) {
    SurveyFinding finding;
    finding.place = place;
    if (Look(solid->Whole(), solid->At(Middle(place)), finding)) findings.push_back(finding);
  }
  return findings;
}

bool SurfaceSurvey::Look(const LocalSolid& whole, const LocalSolid& part,
                         SurveyFinding& finding) const {
  const Vec3 middle = Middle(finding.place);
  const OffSurface off = part.HowFarOff(middle);
  finding.off = off.distance;
  if (finding.place.kind == MeshPlace::Kind::kVertex) {
    if (std::abs(off.distance) <= kVertexShare * m_limits.tolerance) return false;
    SettleVertex(whole, middle, finding);
    return true;
  }
  if (std::abs(off.distance) > kMiddleShare * m_limits.tolerance) {
    SettleMiddle(whole, middle, finding);
    return true;
  }
  if (finding.place.kind == MeshPlace::Kind::kEdge) return false;
  finding.colour = BetterColour(whole, off, middle, finding.place.index);
  return finding.colour.has_value();
}

void SurfaceSurvey::SettleVertex(const LocalSolid& solid, const Vec3& at,
                                 SurveyFinding& finding) const {
  const SettleGoal goal{PlanesUnder(solid, at, m_limits.exact), kReach * m_limits.spacing,
                        m_limits.exact};
  finding.settled = SettlePoint(solid, at, goal);
  if (finding.settled) {
    finding.absorbable = Absorbable(solid, finding.place.index, *finding.settled);
  }
}

void SurfaceSurvey::SettleMiddle(const LocalSolid& solid, const Vec3& middle,
                                 SurveyFinding& finding) const {
  const MeshPlace& place = finding.place;
  if (place.kind == MeshPlace::Kind::kEdge) {
    TrySplit(solid, place, WorstAlong(solid, place.index), finding);
    return;
  }
  TrySplit(solid, place, middle, finding);
  // Where the facet's own middle will not do, one of its edges may.
  for (Index half = 3 * place.index; half < 3 * place.index + 3 && !finding.settled; ++half) {
    TrySplit(solid, {MeshPlace::Kind::kEdge, half}, WorstAlong(solid, half), finding);
  }
}

// Lets a new vertex near `from` split the place if that helps.
void SurfaceSurvey::TrySplit(const LocalSolid& solid, const MeshPlace& place, const Vec3& from,
                             SurveyFinding& finding) const {
  const SettleGoal goal{PlanesUnder(solid, from, m_limits.exact), kReach * m_limits.spacing,
                        m_limits.exact};
  double enough = std::max(m_limits.tolerance, kGain * std::abs(solid.HowFarOff(from).distance));
  for (const std::optional<Vec3>& at :
       {SettleAlong(solid, from, Outward(place), goal), SettlePoint(solid, from, goal)}) {
    if (!at) continue;
    const double left = WorstAfter(solid, place, *at);
    if (left >= enough) continue;
    enough = left;
    finding.settled = at;
    finding.splits = place;
  }
}

// Neighbours that would leave no plane of the stock at `to`.
std::vector<HalfEdgeMesh::Index> SurfaceSurvey::Absorbable(const LocalSolid& solid, Index vertex,
                                                           const Vec3& to) const {
  std::vector<Index> halves;
  Index half = m_mesh.Out(vertex);
  do {
    const std::vector<Generator> planes =
        PlanesUnder(solid, m_mesh.At(m_mesh.Target(half)), m_limits.exact);
    const bool stays = std::all_of(planes.begin(), planes.end(), [&](Generator plane) {
      return std::abs(solid.From(plane, to).distance) <= m_limits.exact;
    });
    if (stays) halves.push_back(half);
    half = m_mesh.Around(half);
  } while (half != m_mesh.Out(vertex));
  const auto distance = [&](Index out) { return Length(m_mesh.At(m_mesh.Target(out)) - to); };
  std::sort(halves.begin(), halves.end(), [&](Index a, Index b) {
    return distance(a) != distance(b) ? distance(a) < distance(b) : a < b;
  });
  return halves;
}

Vec3 SurfaceSurvey::WorstAlong(const LocalSolid& solid, Index half) const {
  Vec3 worst;
  double most = -1;
  for (int i = 1; i <= kSamples; ++i) {
    const Vec3 point = Along(half, static_cast<double>(i) / (kSamples + 1));
    const double off = std::abs(solid.HowFarOff(point).distance);
    if (off <= most) continue;
    most = off;
    worst = point;
  }
  return worst;
}

// How far off the middles of the new edges and facets would be; infinite when a facet would turn
// over or lose its height.
double SurfaceSurvey::WorstAfter(const LocalSolid& solid, const MeshPlace& place,
                                 const Vec3& at) const {
  double worst = 0;
  if (place.kind == MeshPlace::Kind::kFacet) {
    if (!MaySplitFacet(place.index, at)) return kInfinity;
    for (Index half = 3 * place.index; half < 3 * place.index + 3; ++half) {
      worst = std::max(worst, WorstBeside(solid, half, at));
    }
    return worst;
  }
  for (const Index half : {place.index, m_mesh.Twin(place.index)}) {
    if (!MaySplitSide(m_mesh, half, at)) return kInfinity;
    worst = std::max({worst, WorstBeside(solid, HalfEdgeMesh::Next(half), at),
                      WorstBeside(solid, HalfEdgeMesh::Previous(half), at)});
  }
  return worst;
}

// Of the facet between `at` and a half edge, and of its edge from `at` to the half edge's origin.
double SurfaceSurvey::WorstBeside(const LocalSolid& solid, Index half, const Vec3& at) const {
  const Vec3& from = m_mesh.At(m_mesh.Origin(half));
  const Vec3& to = m_mesh.At(m_mesh.Target(half));
  return std::max(std::abs(solid.HowFarOff((from + at) / 2).distance),
                  std::abs(solid.HowFarOff((from + to + at) / 3).distance));
}

bool SurfaceSurvey::MaySplitFacet(Index facet, const Vec3& at) const {
  const Vec3& a = m_mesh.At(m_mesh.Origin(3 * facet));
  const Vec3& b = m_mesh.At(m_mesh.Origin(3 * facet + 1));
  const Vec3& c = m_mesh.At(m_mesh.Origin(3 * facet + 2));
  const Vec3 before = Cross(b - a, c - a);
  return IsSoundFacet(a, b, at, before) && IsSoundFacet(b, c, at, before) &&
         IsSoundFacet(c, a, at, before);
}

std::optional<std::uint8_t> SurfaceSurvey::BetterColour(const LocalSolid& solid,
                                                        const OffSurface& off, const Vec3& middle,
                                                        Index facet) const {
  const std::uint8_t colour = m_solid.Makers().ColourOf(off.maker);
  const std::uint8_t own = m_mesh.Colour(facet);
  if (own == colour || solid.HasColourNear(middle, own, m_limits.tolerance)) return std::nullopt;
  return colour;
}

}  // namespace kernel
