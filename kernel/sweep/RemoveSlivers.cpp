#include "kernel/sweep/RemoveSlivers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

// Mending one facet may flatten its neighbour; more rounds than this do not help.
constexpr int kMostRounds = 8;

double EdgeLength(const HalfEdgeMesh& mesh, Index half) {
  return Length(mesh.At(mesh.Target(half)) - mesh.At(mesh.Origin(half)));
}

bool IsSliver(const HalfEdgeMesh& mesh, Index facet, double least) {
  return FacetHeight(mesh.At(mesh.Origin(3 * facet)), mesh.At(mesh.Origin(3 * facet + 1)),
                     mesh.At(mesh.Origin(3 * facet + 2))) <= least;
}

bool TryCollapse(HalfEdgeMesh& mesh, Index half, double least) {
  if (EdgeLength(mesh, half) > least) return false;
  for (const Index way : {half, mesh.Twin(half)}) {
    if (!mesh.CanCollapse(way)) continue;
    mesh.Collapse(way);
    return true;
  }
  return false;
}

bool Mend(HalfEdgeMesh& mesh, Index facet, double least) {
  std::array<Index, 3> halves = {3 * facet, 3 * facet + 1, 3 * facet + 2};
  std::stable_sort(halves.begin(), halves.end(),
                   [&](Index a, Index b) { return EdgeLength(mesh, a) < EdgeLength(mesh, b); });
  for (const Index half : halves) {
    if (TryCollapse(mesh, half, least)) return true;
  }
  if (EdgeLength(mesh, halves[0]) <= least || !mesh.CanFlip(halves[2])) return false;
  mesh.Flip(halves[2]);
  return true;
}

}  // namespace

double FacetHeight(const Vec3& a, const Vec3& b, const Vec3& c) {
  const double longest =
      std::sqrt(std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)}));
  return longest > 0 ? Length(Cross(b - a, c - a)) / longest : 0;
}

std::size_t RemoveSlivers(HalfEdgeMesh& mesh, double least) {
  std::size_t left = 0;
  for (int round = 0; round < kMostRounds; ++round) {
    left = 0;
    bool mended = false;
    for (Index facet = 0; facet < mesh.FacetCount(); ++facet) {
      if (!mesh.IsLive(facet) || !IsSliver(mesh, facet, least)) continue;
      if (Mend(mesh, facet, least)) {
        mended = true;
      } else {
        ++left;
      }
    }
    if (!mended) break;
  }
  return left;
}

}  // namespace kernel
