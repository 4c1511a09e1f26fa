#include "kernel/sweep/MeshModel.h"

#include <optional>
#include <string>
#include <utility>

#include "kernel/common/FigureText.h"
#include "kernel/common/RunAside.h"
#include "kernel/sweep/Contour.h"
#include "kernel/sweep/CutBlocks.h"
#include "kernel/sweep/MergePlanes.h"
#include "kernel/sweep/SettleMesh.h"
#include "kernel/sweep/SurfaceCells.h"
#include "kernel/sweep/UnseenFeatures.h"

namespace kernel {
namespace {

constexpr double kExact = 1e-10;  // of the stock's diagonal

void WarnOfUnseenFeatures(std::size_t rays, double spacing, Reporter& reporter) {
  reporter.Warn("walls or gaps thinner than the ray spacing of " + FigureText(spacing) +
                " are left out (on " + std::to_string(rays) + " rays)");
}

void WarnOfUnsettled(const Unsettled& unsettled, Reporter& reporter) {
  reporter.Warn("the surface is up to " + FigureText(unsettled.farthest) +
                " off where walls are thinner than the ray spacing (in " +
                std::to_string(unsettled.places) + " places)");
}

CutMesh Contour(const DexelModel& model, const CutMakers& makers, double tolerance,
                Reporter& reporter) {
  reporter.BeginStage("Generating surface", 60, 72);
  std::optional<SurfaceCells> cells;
  std::size_t unseen = 0;
  RunAside(reporter, [&](const Tell&) {
    cells.emplace(SignsOf(model));
    unseen = CountUnseenFeatures(model, *cells, tolerance);
  });
  if (unseen > 0) WarnOfUnseenFeatures(unseen, model.Lattice().Spacing(), reporter);
  CutMesh mesh = ContourCells(RayCrossings(model), *cells, makers,
                              [&](double share) { reporter.Advance(share, 1); });
  reporter.EndStage();
  return mesh;
}

HalfEdgeMesh Settle(CutMesh contour, const CutMakers& makers, const DexelLattice& lattice,
                    const Box3& stockBox, double tolerance, Reporter& reporter) {
  reporter.BeginStage("Optimising surface", 72, 85);
  std::optional<HalfEdgeMesh> mesh;
  Unsettled unsettled;
  RunAside(reporter, [&](const Tell& tell) {
    const CutBlocks solid(lattice, stockBox, makers, contour.vertices);
    const SettleLimits limits{tolerance, kExact * stockBox.Diagonal(), lattice.Spacing()};
    mesh.emplace(std::move(contour));
    unsettled = SettleMesh(*mesh, SurfaceSurvey(*mesh, solid, limits), limits, tell);
  });
  if (unsettled.places > 0) WarnOfUnsettled(unsettled, reporter);
  reporter.EndStage();
  return std::move(*mesh);
}

CutMesh Merge(HalfEdgeMesh mesh, double diagonal, Reporter& reporter) {
  reporter.BeginStage("Cleaning surface", 85, 95);
  MergedPlanes merged;
  RunAside(reporter,
           [&](const Tell& tell) { merged = MergePlanes(std::move(mesh), diagonal, tell); });
  if (merged.slivers > 0) {
    reporter.Warn(std::to_string(merged.slivers) + " facets without area could not be removed");
  }
  reporter.EndStage();
  return std::move(merged.mesh);
}

}  // namespace

CutMesh MeshModel(const DexelModel& model, const CutMakers& makers, const Box3& stockBox,
                  double tolerance, Reporter& reporter) {
  CutMesh contour = Contour(model, makers, tolerance, reporter);
  return Merge(Settle(std::move(contour), makers, model.Lattice(), stockBox, tolerance, reporter),
               stockBox.Diagonal(), reporter);
}

}  // namespace kernel
