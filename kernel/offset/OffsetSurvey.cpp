#include "kernel/offset/OffsetSurvey.h"

#include <algorithm>
#include <cmath>

#include "kernel/offset/EachOnOffset.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

// How far off is worth a change, as a share of the tolerance; places that are off by less than the
// second in their middle are not looked at more closely.
constexpr double kMiddleShare = 0.8;
constexpr double kSureShare = 0.2;
// Of the cosine between a facet's normal and the surface's: facets below the first are to be
// turned, by turning an edge where that raises it by the second.
constexpr double kFacing = 0.2;
constexpr double kGain = 0.1;
// What a vertex that is moved onto a crease may leave of what is off around it.
constexpr double kMoveGain = 0.7;
// The same of an edge that is turned.
constexpr double kTurnGain = 0.6;
// Of its length: an edge that is off by less may be split beside a crease that cannot be reached.
constexpr double kShallow = 0.1;
// Of the longest edge: the height of a facet below which that edge is turned, and how far its ends
// are from the third corner at least; the cosine at which the new facets face out.
constexpr double kCap = 0.05;
constexpr double kCapEnds = 0.2;
constexpr double kCapFacing = 0.7;
constexpr double kLittleArea = 0.2;  // of what the facets beside the edge were

Vec3 MiddleOf(const HalfEdgeMesh& mesh, Index half) {
  return (mesh.At(mesh.Origin(half)) + mesh.At(mesh.Target(half))) / 2;
}

Vec3 Middle(const Corners& facet) { return (facet[0] + facet[1] + facet[2]) / 3; }

Vec3 NormalOf(const Corners& facet) { return Cross(facet[1] - facet[0], facet[2] - facet[0]); }

double AreaOf(const std::array<Corners, 2>& facets) {
  return (Length(NormalOf(facets[0])) + Length(NormalOf(facets[1]))) / 2;
}

}  // namespace

double OffsetSurvey::LengthOf(Index half) const {
  return Length(m_mesh.At(m_mesh.Target(half)) - m_mesh.At(m_mesh.Origin(half)));
}

std::vector<OffsetChange> OffsetSurvey::ForFacets(const std::vector<Index>& due,
                                                  std::vector<std::uint8_t>& colours,
                                                  const Watch& watch) const {
  std::vector<OffsetChange> found(due.size(),
                                  OffsetChange{HalfEdgeMesh::kNone, 0, false, false, {}});
  colours.resize(due.size());
  ForEachInChunks(due.size(), m_makers, watch, [&](const LocalOffset& solid, std::size_t i) {
    const Index facet = due[i];
    const OffSurface off = solid.HowFarOff(Middle(CornersOf(3 * facet)));
    colours[i] = m_makers.ColourOf(off.maker);
    const double facing = FacingOf(solid, CornersOf(3 * facet), off.maker);
    if (const Index half = CapOf(solid, facet); half != HalfEdgeMesh::kNone) {
      found[i] = {half, LengthOf(half), true, false, {}};
    } else if (facing < kFacing) {
      found[i] = TurnOf(solid, facet);
    }
    if (found[i].turns || !IsFacetOff(solid, CornersOf(3 * facet), off.distance)) return;
    Index longest = 3 * facet;
    for (const Index half : {longest + 1, longest + 2}) {
      if (LengthOf(half) > LengthOf(longest)) longest = half;
    }
    found[i] = SplitOf(solid, longest);
  });
  std::erase_if(found, [](const OffsetChange& c) { return c.half == HalfEdgeMesh::kNone; });
  return found;
}

// The longest edge of a facet whose third corner lies nearly on it, where it is better turned:
// beside it an edge that is off cannot be mended, as nothing fits between. None for other facets.
Index OffsetSurvey::CapOf(const LocalOffset& solid, Index facet) const {
  Index longest = 3 * facet;
  for (const Index half : {longest + 1, longest + 2}) {
    if (LengthOf(half) > LengthOf(longest)) longest = half;
  }
  const Corners near = CornersOf(longest);
  const double length = LengthOf(longest);
  if (Length(NormalOf(near)) > kCap * length * length) return HalfEdgeMesh::kNone;
  const double ends = std::min(Length(near[2] - near[0]), Length(near[2] - near[1]));
  if (ends < kCapEnds * length || !m_mesh.CanFlip(longest)) return HalfEdgeMesh::kNone;
  const Corners far = CornersOf(m_mesh.Twin(longest));
  if (OffAt(solid, (near[2] + far[2]) / 2) > kMiddleShare * m_limits.tolerance) {
    return HalfEdgeMesh::kNone;
  }
  const bool facesOut = Facing(solid, {near[2], near[0], far[2]}) > kCapFacing &&
                        Facing(solid, {far[2], near[1], near[2]}) > kCapFacing;
  return facesOut ? longest : HalfEdgeMesh::kNone;
}

Corners OffsetSurvey::CornersOf(Index half) const {
  return {m_mesh.At(m_mesh.Origin(half)), m_mesh.At(m_mesh.Target(half)),
          m_mesh.At(m_mesh.Target(HalfEdgeMesh::Next(half)))};
}

// The cosine between a facet's normal and that of the surface at its centre; -1 for a needle.
double OffsetSurvey::Facing(const LocalOffset& solid, const Corners& facet) const {
  return FacingOf(solid, facet, solid.HowFarOff(Middle(facet)).maker);
}

// The same when it is known which body is there.
double OffsetSurvey::FacingOf(const LocalOffset& solid, const Corners& facet,
                              Generator maker) const {
  const Vec3 normal = NormalOf(facet);
  if (!IsSoundFacet(facet[0], facet[1], facet[2], normal)) return -1;
  return Dot(Normalised(normal), solid.From(maker, Middle(facet)).plane.normal);
}

// The edge of a facet that faces aside which is best turned for that; none where that helps
// little.
OffsetChange OffsetSurvey::TurnOf(const LocalOffset& solid, Index facet) const {
  OffsetChange best{HalfEdgeMesh::kNone, 0, false, false, {}};
  double most = kGain;
  for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
    if (!m_mesh.CanFlip(half)) continue;
    const Corners near = CornersOf(half);
    const Corners far = CornersOf(m_mesh.Twin(half));
    const double before = std::min(Facing(solid, near), Facing(solid, far));
    const double after = std::min(Facing(solid, {near[2], near[0], far[2]}),
                                  Facing(solid, {far[2], near[1], near[2]}));
    if (after - before <= most) continue;
    most = after - before;
    best = {half, LengthOf(half), true, false, {}};
  }
  return best;
}

std::vector<OffsetChange> OffsetSurvey::ForEdges(const std::vector<Index>& halves,
                                                 const Watch& watch) const {
  std::vector<OffsetChange> found(halves.size(),
                                  OffsetChange{HalfEdgeMesh::kNone, 0, false, false, {}});
  ForEachInChunks(halves.size(), m_makers, watch, [&](const LocalOffset& solid, std::size_t i) {
    if (!IsEdgeOff(solid, halves[i])) return;
    if (m_mesh.CanFlip(halves[i]) && TurnsWell(solid, halves[i])) {
      found[i] = {halves[i], LengthOf(halves[i]), true, false, {}};
    } else {
      found[i] = SplitOf(solid, halves[i]);
    }
  });
  std::erase_if(found, [](const OffsetChange& c) { return c.half == HalfEdgeMesh::kNone; });
  return found;
}

// Where the middle is near the limit, other places may be beyond it.
bool OffsetSurvey::IsEdgeOff(const LocalOffset& solid, Index half) const {
  const double middle = OffAt(solid, MiddleOf(m_mesh, half));
  if (middle <= kSureShare * m_limits.tolerance) return false;
  const Vec3& from = m_mesh.At(m_mesh.Origin(half));
  const Vec3& to = m_mesh.At(m_mesh.Target(half));
  return std::max({middle, OffAt(solid, (from * 3 + to) / 4), OffAt(solid, (from + to * 3) / 4)}) >
         kMiddleShare * m_limits.tolerance;
}

bool OffsetSurvey::IsFacetOff(const LocalOffset& solid, const Corners& facet, double middle) const {
  double worst = std::abs(middle);
  if (worst <= kSureShare * m_limits.tolerance) return false;
  const Vec3 centre = Middle(facet);
  for (const Vec3& corner : facet) {
    // Halfway to a corner, and the other way halfway to the side.
    worst = std::max(
        {worst, OffAt(solid, (centre + corner) / 2), OffAt(solid, centre * 1.25 - corner / 4)});
  }
  return worst > kMiddleShare * m_limits.tolerance;
}

OffsetChange OffsetSurvey::SplitOf(const LocalOffset& solid, Index half) const {
  const Vec3& from = m_mesh.At(m_mesh.Origin(half));
  const Vec3& to = m_mesh.At(m_mesh.Target(half));
  const double length = LengthOf(half);
  const std::optional<PlaceAlongEdge> place = PlaceOnEdge(solid, from, to, m_limits);
  if (place && place->isCrease) {
    for (const Index side : {half, m_mesh.Twin(half)}) {
      if (MovesWell(solid, side, place->at)) return {side, length, false, true, place->at};
    }
  }
  if (place && SplitsWell(solid, half, place->at)) return {half, length, false, false, place->at};
  if (place && place->isCrease && OffAt(solid, (from + to) / 2) < kShallow * length) {
    const std::optional<PlaceAlongEdge> above = PlaceAboveMiddle(solid, from, to, m_limits);
    if (above && SplitsWell(solid, half, above->at)) {
      return {half, length, false, false, above->at};
    }
  }
  return {half, length, false, false, {}};
}

bool OffsetSurvey::SplitsWell(const LocalOffset& solid, Index half, const Vec3& at) const {
  const auto mayBeAt = [&](Index side) {
    return MaySplitSide(m_mesh, side, at) || FacesOut(solid, side, at);
  };
  return mayBeAt(half) && mayBeAt(m_mesh.Twin(half));
}

// Whether the origin of a half edge, moved onto a crease, leaves much less around it.
bool OffsetSurvey::MovesWell(const LocalOffset& solid, Index half, const Vec3& to) const {
  double before = 0, after = 0;
  const Vec3& from = m_mesh.At(m_mesh.Origin(half));
  Index out = half;
  do {
    const Vec3& a = m_mesh.At(m_mesh.Target(out));
    const Vec3& b = m_mesh.At(m_mesh.Target(HalfEdgeMesh::Next(out)));
    if (Facing(solid, {to, a, b}) < kFacing) return false;
    before = std::max({before, OffAt(solid, (from + a) / 2), OffAt(solid, (from + a + b) / 3)});
    after = std::max({after, OffAt(solid, (to + a) / 2), OffAt(solid, (to + a + b) / 3)});
    out = m_mesh.Around(out);
  } while (out != half);
  return after < kMoveGain * before;
}

double OffsetSurvey::OffAt(const LocalOffset& solid, const Vec3& point) const {
  return std::abs(solid.HowFarOff(point).distance);
}

// Whether the facets that the facet of a half edge becomes by a vertex on that edge face as the
// surface does, although the facet itself may not.
bool OffsetSurvey::FacesOut(const LocalOffset& solid, Index half, const Vec3& at) const {
  const Vec3& left = m_mesh.At(m_mesh.Target(HalfEdgeMesh::Next(half)));
  return Facing(solid, {m_mesh.At(m_mesh.Origin(half)), at, left}) > kFacing &&
         Facing(solid, {at, m_mesh.At(m_mesh.Target(half)), left}) > kFacing;
}

// Whether the edge between the vertices opposite this one would be off less, or not at all.
bool OffsetSurvey::TurnsWell(const LocalOffset& solid, Index half) const {
  const Corners near = CornersOf(half);
  const Corners far = CornersOf(m_mesh.Twin(half));
  const std::array<Corners, 2> after = {Corners{near[2], near[0], far[2]},
                                        Corners{far[2], near[1], near[2]}};
  const double left = std::max({OffAt(solid, (near[2] + far[2]) / 2),
                                OffAt(solid, Middle(after[0])), OffAt(solid, Middle(after[1]))});
  const Vec3 before = NormalOf(near) + NormalOf(far);
  if (left <= kMiddleShare * m_limits.tolerance &&
      IsSoundFacet(after[0][0], after[0][1], after[0][2], before) &&
      IsSoundFacet(after[1][0], after[1][1], after[1][2], before)) {
    return true;
  }
  const double most = std::max({OffAt(solid, (near[0] + near[1]) / 2), OffAt(solid, Middle(near)),
                                OffAt(solid, Middle(far))});
  if (left >= kTurnGain * most) return false;
  // Between vertices beside each other on a crease it makes no difference which way facets face.
  if (AreaOf(after) < kLittleArea * AreaOf({near, far})) return true;
  const double facing = std::min(Facing(solid, after[0]), Facing(solid, after[1]));
  return facing > -1 && facing >= std::min(Facing(solid, near), Facing(solid, far));
}

}  // namespace kernel
