#include "kernel/compress/CompressMesh.h"

#include <algorithm>
#include <vector>

#include "kernel/compress/CollapseRounds.h"
#include "kernel/compress/ProveNear.h"

namespace kernel {
namespace {

constexpr double kBorderShare = 0.01;
// What fails the proof may use half of the tolerance, then nothing of it.
constexpr float kFirstShare = 0.5F;
constexpr int kMostAttempts = 8;

// States of the mesh on its way, so that what fails the proof need not begin anew.
class Milestones {
 public:
  explicit Milestones(const HalfEdgeMesh& original) : m_kept(kMost, MergedMesh(original)) {}

  void Add(const MergedMesh& merged) {
    std::rotate(m_kept.begin(), m_kept.begin() + 1, m_kept.end());
    m_kept.back() = merged;
  }
  // A state of more than twice as many facets as the last one.
  const MergedMesh& Early() const { return m_kept.front(); }

 private:
  static constexpr std::size_t kMost = 2;
  std::vector<MergedMesh> m_kept;
};

}  // namespace

CutMesh CompressMesh(CutMesh mesh, double tolerance, double least, const Tell& tell) {
  const HalfEdgeMesh original(std::move(mesh));
  const CompressLimits limits{tolerance, kBorderShare * tolerance, least};
  Milestones milestones(original);
  MergedMesh merged(original);
  std::vector<float> shares(original.VertexCount(), 1);
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    // Most of the time goes into the first attempt.
    const double from = attempt == 0 ? 0 : 0.9;
    const double to = attempt == 0 ? 0.9 : 1;
    const auto tellShare = [&](double share) { tell(from + share * (to - from)); };
    CollapseInRounds(
        merged, limits, [&](double share) { tellShare(0.8 * share); },
        [&] {
          if (attempt == 0) milestones.Add(merged);
        });
    const std::vector<HalfEdgeMesh::Index> unproven =
        ProveNear(original, merged, tolerance, [&](double share) { tellShare(0.8 + 0.2 * share); });
    if (unproven.empty()) return merged.mesh.Release();
    for (const HalfEdgeMesh::Index vertex : unproven) {
      shares[vertex] = shares[vertex] < 1 ? 0 : kFirstShare;
    }
    merged = attempt < kMostAttempts / 2 ? milestones.Early() : MergedMesh(original);
    merged.shares = shares;
  }
  return HalfEdgeMesh(original).Release();
}

}  // namespace kernel
