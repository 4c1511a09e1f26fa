#include "kernel/sweep/PlayMesh.h"

#include "kernel/common/FatalError.h"
#include "stock/SurfaceTransfer.h"

namespace kernel {
namespace {

constexpr std::size_t kReportEvery = 8192;

// advance(share) hears how far the open stage is, end() that it is over.
template <class Advance, class End>
void Play(const CutMesh& mesh, SurfaceTransfer& output, const Advance& advance, const End& end) {
  std::vector<void*> handles(mesh.vertices.size(), nullptr);
  std::vector<bool> used(mesh.vertices.size(), false);
  for (const CutMesh::Facet& facet : mesh.facets) {
    for (const std::uint32_t vertex : facet.vertices) used[vertex] = true;
  }
  const auto total = static_cast<double>(mesh.vertices.size() + mesh.facets.size());
  std::size_t done = 0;
  const auto count = [&] {
    if (++done % kReportEvery == 0) advance(static_cast<double>(done) / total);
  };
  output.Reset();
  for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
    count();
    if (!used[i]) continue;
    const Vec3& p = mesh.vertices[i];
    const double xyz[3] = {p.x, p.y, p.z};
    handles[i] = output.AddVertex(xyz);
    if (handles[i] == nullptr) throw FatalError("Memory limit reached.");
  }
  for (const CutMesh::Facet& facet : mesh.facets) {
    count();
    const auto& [a, b, c] = facet.vertices;
    if (output.AddTriangle(handles[a], handles[b], handles[c], static_cast<char>(facet.colour)) ==
        nullptr) {
      throw FatalError("Memory limit reached.");
    }
  }
  advance(1.0);
  end();
  output.Close();
}

}  // namespace

void PlayMesh(const CutMesh& mesh, SurfaceTransfer& output, Reporter& reporter) {
  Play(
      mesh, output, [&](double share) { reporter.Advance(share, 1); },
      [&] { reporter.EndStage(); });
}

void PlayMesh(const CutMesh& mesh, SurfaceTransfer& output, StageProgress& progress) {
  Play(
      mesh, output, [&](double share) { progress.Advance(share); }, [&] { progress.End(); });
}

}  // namespace kernel
