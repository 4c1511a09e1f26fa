#include "kernel/compress/CompressMesh.h"

#include <algorithm>
#include <vector>

#include "kernel/common/Workers.h"
#include "kernel/compress/CollapseRounds.h"
#include "kernel/compress/ProveNear.h"

namespace kernel {
namespace {

constexpr double kBorderShare = 0.01;
// What fails the proof may use half of the tolerance, then nothing of it.
constexpr float kFirstShare = 0.5F;
constexpr int kMostAttempts = 8;

}  // namespace

CutMesh CompressMesh(CutMesh mesh, double tolerance, double least, const Tell& tell) {
  const HalfEdgeMesh original(std::move(mesh));
  const CompressLimits limits{tolerance, kBorderShare * tolerance, least};
  std::vector<float> shares(original.VertexCount(), 1);
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    // Most meshes pass at the first attempt; a further one begins where that has brought the user.
    const double from = attempt == 0 ? 0 : 0.9;
    const double to = attempt == 0 ? 0.9 : 1;
    MergedMesh merged{original, FeatureEdges(original),
                      CarriedPoints(original.VertexCount(), original.FacetCount()), shares};
    CollapseInRounds(merged, limits,
                     [&](double share) { tell(from + 0.8 * share * (to - from)); });
    const std::vector<HalfEdgeMesh::Index> unproven =
        ProveNear(original, merged, tolerance, [&](double share) {
          tell(from + (0.8 + 0.2 * share) * (to - from));
        });
    if (unproven.empty()) return merged.mesh.Release();
    for (const HalfEdgeMesh::Index vertex : unproven) {
      shares[vertex] = shares[vertex] < 1 ? 0 : kFirstShare;
    }
  }
  return HalfEdgeMesh(original).Release();
}

}  // namespace kernel
