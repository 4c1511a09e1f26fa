#include "kernel/compress/CompressMesh.h"

#include <algorithm>
#include <vector>

#include "kernel/compress/CollapseRounds.h"
#include "kernel/compress/ProveNear.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

constexpr double kBorderShare = 0.01;
// What fails the proof may use half of the tolerance, then nothing of it.
constexpr float kFirstShare = 0.5F;
constexpr int kMostAttempts = 12;
// From this attempt on what is next to it is held back as well.
constexpr int kWidenFrom = 3;

// The vertices, and those next to them in the mesh.
std::vector<Index> WithNeighbours(const HalfEdgeMesh& mesh, const std::vector<Index>& vertices) {
  std::vector<Index> all = vertices;
  for (const Index vertex : vertices) {
    const Index first = mesh.Out(vertex);
    Index half = first;
    do {
      all.push_back(mesh.Target(half));
      half = mesh.Around(half);
    } while (half != first);
  }
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
  return all;
}

}  // namespace

CutMesh CompressMesh(CutMesh mesh, double tolerance, double least, const Tell& tell) {
  const HalfEdgeMesh original(std::move(mesh));
  const CompressLimits limits{tolerance, kBorderShare * tolerance, least};
  std::vector<float> shares(original.VertexCount(), 1);
  double from = 0;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    // Most meshes pass at the first attempt; each further one has half of what is left.
    const double to = attempt == 0 ? 0.8 : from + (1 - from) / 2;
    const auto tellShare = [&](double share) { tell(from + share * (to - from)); };
    MergedMesh merged(original, shares);
    CollapseInRounds(merged, limits, [&](double share) { tellShare(0.8 * share); });
    std::vector<Index> unproven =
        ProveNear(original, merged, tolerance, [&](double share) { tellShare(0.8 + 0.2 * share); });
    if (unproven.empty()) return merged.mesh.Release();
    if (attempt >= kWidenFrom) unproven = WithNeighbours(original, unproven);
    for (const Index vertex : unproven) shares[vertex] = shares[vertex] < 1 ? 0 : kFirstShare;
    from = to;
  }
  return HalfEdgeMesh(original).Release();
}

}  // namespace kernel
