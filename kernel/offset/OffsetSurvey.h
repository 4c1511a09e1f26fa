#pragma once

#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "kernel/offset/PlaceOnOffset.h"
#include "kernel/sweep/HalfEdgeMesh.h"

namespace kernel {

// What a place of a mesh that is off the exact surface should become: an edge is to be turned, or
// split for its own sake or that of a facet beside it, or its origin is to be moved.
struct OffsetChange {
  HalfEdgeMesh::Index half;
  double length = 0;  // of the edge
  bool turns = false, moves = false;
  std::optional<Vec3> at;  // of the vertex; none where there is no good place
};

// Compares a mesh with the exact surface. Keeps references to mesh and makers; the mesh may change
// between two calls. What is told does not depend on the number of threads.
class OffsetSurvey {
 public:
  using Index = HalfEdgeMesh::Index;
  using Watch = std::function<void(double)>;

  OffsetSurvey(const HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits)
      : m_mesh(mesh), m_makers(makers), m_limits(limits) {}

  // For those of the facets that are off inside or face aside. `colours`: what each facet lies on.
  std::vector<OffsetChange> ForFacets(const std::vector<Index>& facets,
                                      std::vector<std::uint8_t>& colours, const Watch& watch) const;
  // For those of the edges that are off.
  std::vector<OffsetChange> ForEdges(const std::vector<Index>& halves, const Watch& watch) const;

 private:
  // From the half edge's origin on.
  Corners CornersOf(Index half) const;
  double LengthOf(Index half) const;
  double OffAt(const LocalOffset& solid, const Vec3& point) const;
  double Facing(const LocalOffset& solid, const Corners& facet) const;
  double FacingOf(const LocalOffset& solid, const Corners& facet, Generator maker) const;
  Index CapOf(const LocalOffset& solid, Index facet) const;
  OffsetChange TurnOf(const LocalOffset& solid, Index facet) const;
  OffsetChange SplitOf(const LocalOffset& solid, Index half) const;
  bool IsEdgeOff(const LocalOffset& solid, Index half) const;
  bool IsFacetOff(const LocalOffset& solid, const Corners& facet, double middle) const;
  bool SplitsWell(const LocalOffset& solid, Index half, const Vec3& at) const;
  bool MovesWell(const LocalOffset& solid, Index half, const Vec3& to) const;
  bool FacesOut(const LocalOffset& solid, Index half, const Vec3& at) const;
  bool TurnsWell(const LocalOffset& solid, Index half) const;

  const HalfEdgeMesh& m_mesh;
  const OffsetMakers& m_makers;
  OffsetLimits m_limits;
};

}  // namespace kernel
