#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "kernel/sweep/CutBlocks.h"
#include "kernel/sweep/HalfEdgeMesh.h"
#include "kernel/sweep/SettlePoint.h"

namespace kernel {

struct SettleLimits {
  double tolerance = 0;  // of the surface
  double exact = 0;      // closer than this is on it
  double spacing = 0;    // of the rays
};

// A vertex, an edge (one of its half edges) or a facet, by number.
struct MeshPlace {
  enum class Kind : std::uint8_t { kVertex, kEdge, kFacet } kind = Kind::kVertex;
  HalfEdgeMesh::Index index = 0;
  friend bool operator<(const MeshPlace& a, const MeshPlace& b) {
    return a.kind != b.kind ? a.kind < b.kind : a.index < b.index;
  }
};

// A place of the mesh that should change.
struct SurveyFinding {
  MeshPlace place;
  double off = 0;               // how far a vertex, or the middle of an edge or facet, lies off
  std::optional<Vec3> settled;  // where the vertex, or a new one, belongs
  MeshPlace splits;             // the edge or facet that the new vertex splits
  // Half edges from a vertex to those neighbours that may become one with it, the best first.
  std::vector<HalfEdgeMesh::Index> absorbable;
  std::optional<std::uint8_t> colour;  // that a facet should have
};

// Compares a mesh with the exact surface. Keeps references to all its arguments; the mesh may
// change between two surveys.
class SurfaceSurvey {
 public:
  SurfaceSurvey(const HalfEdgeMesh& mesh, const CutBlocks& solid, const SettleLimits& limits)
      : m_mesh(mesh), m_solid(solid), m_limits(limits) {}

  // Those of the places that are off or have a colour that nothing near them has, in ascending
  // order. For an edge or facet that is off, `settled` makes its surroundings better, or there is
  // none. Runs on all threads; `watch` hears the share that is done.
  std::vector<SurveyFinding> Of(const std::vector<MeshPlace>& places,
                                const std::function<void(double)>& watch) const;

 private:
  using Index = HalfEdgeMesh::Index;

  Vec3 Middle(const MeshPlace& place) const;
  Vec3 Along(Index half, double share) const;
  Vec3 NormalOf(Index facet) const;
  Vec3 Outward(const MeshPlace& place) const;
  std::vector<SurveyFinding> InBlock(std::uint32_t block, std::span<const MeshPlace> places) const;
  bool Look(const LocalSolid& whole, const LocalSolid& part, SurveyFinding& finding) const;
  void SettleVertex(const LocalSolid& solid, const Vec3& at, SurveyFinding& finding) const;
  void SettleMiddle(const LocalSolid& solid, const Vec3& middle, SurveyFinding& finding) const;
  void TrySplit(const LocalSolid& solid, const MeshPlace& place, const Vec3& from,
                SurveyFinding& finding) const;
  std::vector<Index> Absorbable(const LocalSolid& solid, Index vertex, const Vec3& to) const;
  Vec3 WorstAlong(const LocalSolid& solid, Index half) const;
  double WorstAfter(const LocalSolid& solid, const MeshPlace& place, const Vec3& at) const;
  double WorstBeside(const LocalSolid& solid, Index half, const Vec3& at) const;
  bool MaySplitFacet(Index facet, const Vec3& at) const;
  std::optional<std::uint8_t> BetterColour(const LocalSolid& solid, const OffSurface& off,
                                           const Vec3& middle, Index facet) const;

  const HalfEdgeMesh& m_mesh;
  const CutBlocks& m_solid;
  SettleLimits m_limits;
};

}  // namespace kernel
