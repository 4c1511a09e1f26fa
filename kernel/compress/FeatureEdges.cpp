#include "kernel/compress/FeatureEdges.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

constexpr double kSharpCosine = 0.8191520442889918;  // of 35 degrees

Vec3 NormalOf(const HalfEdgeMesh& mesh, Index facet) {
  const Vec3& a = mesh.At(mesh.Origin(3 * facet));
  return Normalised(
      Cross(mesh.At(mesh.Origin(3 * facet + 1)) - a, mesh.At(mesh.Origin(3 * facet + 2)) - a));
}

}  // namespace

bool IsSharp(const Vec3& normal, const Vec3& other) { return Dot(normal, other) < kSharpCosine; }

FeatureEdges::FeatureEdges(const HalfEdgeMesh& mesh) : m_moved(3 * mesh.FacetCount(), kNoFeature) {
  std::vector<Vec3> normals(mesh.FacetCount());
  for (Index f = 0; f < mesh.FacetCount(); ++f) {
    if (mesh.IsLive(f)) normals[f] = NormalOf(mesh, f);
  }
  for (Index half = 0; half < m_moved.size(); ++half) {
    if (!mesh.IsLive(half / 3)) continue;
    const Index here = half / 3;
    const Index beyond = mesh.Twin(half) / 3;
    const bool isFeature =
        mesh.Colour(here) != mesh.Colour(beyond) || IsSharp(normals[here], normals[beyond]);
    if (isFeature) m_moved[half] = 0;
  }
}

void FeatureEdges::SetMoved(const HalfEdgeMesh& mesh, Index half, double moved) {
  // Upwards, so that the sum of many steps is never below what it stands for.
  const float kept =
      std::nextafter(static_cast<float>(moved), std::numeric_limits<float>::infinity());
  m_moved[half] = m_moved[mesh.Twin(half)] = kept;
}

void FeatureEdges::Join(Index a, Index b) {
  m_moved[a] = m_moved[b] = std::max(m_moved[a], m_moved[b]);
}

}  // namespace kernel
