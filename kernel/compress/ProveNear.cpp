#include "kernel/compress/ProveNear.h"

#include <algorithm>
#include <mutex>

#include "kernel/common/Workers.h"
#include "kernel/compress/SurfaceBound.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

constexpr std::size_t kChunk = 1024;

class Prover {
 public:
  Prover(const HalfEdgeMesh& original, const MergedMesh& merged, double tolerance)
      : m_original(original),
        m_merged(merged),
        m_tolerance(tolerance),
        m_originalBound(original),
        m_mergedBound(merged.mesh),
        m_home(original.VertexCount()) {
    for (Index facet = 0; facet < merged.mesh.FacetCount(); ++facet) {
      if (!merged.mesh.IsLive(facet)) continue;
      for (Index i = 0; i < 3; ++i) m_home[merged.mesh.Origin(3 * facet + i)] = facet;
      merged.carried.ForEachOf(facet, [&](Index point) {
        if (point < m_home.size()) m_home[point] = facet;
      });
    }
  }

  // Facet numbers of the two meshes are the same where a facet is still what it was.
  std::vector<Index> Unproven(Index facet) const {
    if (IsUnchanged(facet)) return {};
    std::vector<Index> unproven;
    if (!IsProven(facet)) AddCorners(m_original, facet, unproven);
    if (m_merged.mesh.IsLive(facet) && !IsProvenBack(facet)) {
      AddCorners(m_merged.mesh, facet, unproven);
      m_merged.carried.ForEachOf(facet, [&](Index point) {
        for (const Index end : m_merged.carried.EndsOf(point)) unproven.push_back(end);
      });
    }
    return unproven;
  }

 private:
  static void AddCorners(const HalfEdgeMesh& mesh, Index facet, std::vector<Index>& vertices) {
    for (Index i = 0; i < 3; ++i) vertices.push_back(mesh.Origin(3 * facet + i));
  }

  bool IsUnchanged(Index facet) const {
    for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
      if (m_merged.mesh.Origin(half) != m_original.Origin(half)) return false;
    }
    return true;
  }

  bool IsProven(Index facet) const {
    const std::array<Vec3, 3> corners = m_originalBound.CornersOf(facet);
    for (Index i = 0; i < 3; ++i) {
      const Index vertex = m_original.Origin(3 * facet + i);
      if (m_mergedBound.IsWithin(corners, m_tolerance, m_home[vertex])) return true;
    }
    return IsWithinFromCorners(m_mergedBound, m_merged.mesh, corners, m_original, facet);
  }

  bool IsProvenBack(Index facet) const {
    const std::array<Vec3, 3> corners = m_mergedBound.CornersOf(facet);
    const Vec3 centre = (corners[0] + corners[1] + corners[2]) / 3;
    Index nearest = m_merged.mesh.Origin(3 * facet);
    double least = LengthSquared(m_original.At(nearest) - centre);
    m_merged.carried.ForEachOf(facet, [&](Index point) {
      const double square = LengthSquared(m_merged.carried.At(m_original, point) - centre);
      if (square >= least) return;
      least = square;
      nearest = m_merged.carried.EndsOf(point)[0];
    });
    return m_originalBound.IsWithin(corners, m_tolerance, m_original.Out(nearest) / 3) ||
           IsWithinFromCorners(m_originalBound, m_original, corners, m_merged.mesh, facet);
  }

  // The same for every facet around the corners that are vertices of both meshes: at an edge the
  // first one tried may lead over to the wrong side.
  bool IsWithinFromCorners(const SurfaceBound& bound, const HalfEdgeMesh& mesh,
                           const std::array<Vec3, 3>& corners, const HalfEdgeMesh& owner,
                           Index facet) const {
    for (Index i = 0; i < 3; ++i) {
      const Index first = mesh.Out(owner.Origin(3 * facet + i));
      if (first == HalfEdgeMesh::kNone) continue;
      Index half = first;
      do {
        if (bound.IsWithin(corners, m_tolerance, half / 3)) return true;
        half = mesh.Around(half);
      } while (half != first);
    }
    return false;
  }

  const HalfEdgeMesh& m_original;
  const MergedMesh& m_merged;
  double m_tolerance;
  SurfaceBound m_originalBound, m_mergedBound;
  std::vector<Index> m_home;  // of each vertex a facet of the merged mesh
};

}  // namespace

std::vector<Index> ProveNear(const HalfEdgeMesh& original, const MergedMesh& merged,
                             double tolerance, const Tell& tell) {
  const Prover prover(original, merged, tolerance);
  std::vector<Index> unproven;
  std::mutex mutex;
  const std::size_t count = original.FacetCount();
  const std::size_t chunks = (count + kChunk - 1) / kChunk;
  RunTasks(
      chunks,
      [&](std::size_t chunk) {
        for (std::size_t f = chunk * kChunk; f < std::min((chunk + 1) * kChunk, count); ++f) {
          const std::vector<Index> failed = prover.Unproven(static_cast<Index>(f));
          if (failed.empty()) continue;
          const std::lock_guard lock(mutex);
          unproven.insert(unproven.end(), failed.begin(), failed.end());
        }
      },
      [&](std::size_t done) { tell(static_cast<double>(done) / static_cast<double>(chunks)); });
  std::sort(unproven.begin(), unproven.end());
  unproven.erase(std::unique(unproven.begin(), unproven.end()), unproven.end());
  return unproven;
}

}  // namespace kernel
