#include "kernel/sweep/CompressSurface.h"

#include <utility>

#include "kernel/common/RunAside.h"
#include "kernel/compress/CompressMesh.h"
#include "kernel/sweep/HalfEdgeMesh.h"
#include "kernel/sweep/MergePlanes.h"

namespace kernel {
namespace {

// Shares of the stock's diagonal.
constexpr double kLeastHeight = 1e-9;
// What merging in planes may have moved, which counts as well.
constexpr double kReserve = 1e-9;
// The share of the stage that merging in planes takes.
constexpr double kFlatDone = 0.1;

// The mesh itself where it is smaller than the tolerance can be told from.
CutMesh Within(CutMesh mesh, double tolerance, double diagonal, const Tell& tell) {
  const double left = tolerance - kReserve * diagonal;
  if (left <= 0 || mesh.facets.empty()) return mesh;
  return CompressMesh(std::move(mesh), left, kLeastHeight * diagonal, tell);
}

// Does work(tell) as the stage of compressing.
template <class Work>
void AsStage(Reporter& reporter, const Work& work) {
  reporter.BeginStage("Compressing surface", 85, 95);
  RunAside(reporter, work);
  reporter.EndStage();
}

}  // namespace

CutMesh CompressCut(CutMesh mesh, double tolerance, double diagonal, Reporter& reporter) {
  if (tolerance > 0) {
    AsStage(reporter,
            [&](const Tell& tell) { mesh = Within(std::move(mesh), tolerance, diagonal, tell); });
  }
  return mesh;
}

CutMesh CompressUncut(CutMesh mesh, double tolerance, double diagonal, Reporter& reporter) {
  bool isClosed = false;
  AsStage(reporter, [&](const Tell& tell) {
    HalfEdgeMesh links(mesh);
    isClosed = links.IsClosed();
    if (!isClosed) return;
    mesh = MergePlanes(std::move(links), diagonal, [&](double share) {
             tell(kFlatDone * share);
           }).mesh;
    mesh = Within(std::move(mesh), tolerance, diagonal,
                  [&](double share) { tell(kFlatDone + (1 - kFlatDone) * share); });
  });
  if (!isClosed) reporter.Warn("facets are not merged, as some edges are in more than two of them");
  return mesh;
}

}  // namespace kernel
