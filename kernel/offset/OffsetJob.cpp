#include "kernel/offset/OffsetJob.h"

#include <cmath>
#include <optional>
#include <utility>

#include "kernel/common/FatalError.h"
#include "kernel/common/FigureText.h"
#include "kernel/common/RunAside.h"
#include "kernel/offset/MeshOffset.h"
#include "kernel/offset/OffsetPlan.h"
#include "kernel/sweep/PlayMesh.h"

namespace kernel {
namespace {

constexpr double kDefaultDegrees = 10;

void CheckNumbers(double degrees, double distance) {
  if (!(degrees >= 0 && degrees <= 90)) throw FatalError("angle: not a number from 0 to 90");
  if (!std::isfinite(distance) || distance == 0) {
    throw FatalError("distance: not a number other than 0");
  }
}

PreparedSurface Prepare(const StockMesh& given, double distance, StageProgress& progress) {
  PreparedSurface surface;
  progress.Begin("Preparing surface");
  RunAside(progress, [&](const Tell&) { surface = PrepareSurface(given); });
  progress.End();
  if (surface.turned) progress.Warn("the surface's facets faced inwards and have been turned");
  if (distance < 0 && !surface.isClosed) {
    throw FatalError("the surface is open: it has no inside that the distance could be taken from");
  }
  if (!std::isfinite(surface.box.Grown(std::abs(distance)).Diagonal())) {
    throw FatalError("distance: too large to measure");
  }
  return surface;
}

OffsetField::Side SideOf(const PreparedSurface& surface, double distance) {
  if (!surface.isClosed) return OffsetField::Side::kBoth;
  return distance > 0 ? OffsetField::Side::kOutside : OffsetField::Side::kInside;
}

OffsetPlan PlanFor(const PreparedSurface& surface, double degrees, double distance,
                   StageProgress& progress) {
  const OffsetPlan plan = PlanOffset(surface, std::abs(distance), degrees);
  if (plan.toleranceRaised) {
    progress.Warn("the facets may be up to " + FigureText(plan.tolerance) +
                  " off the exact surface, as smaller ones were too many");
  }
  return plan;
}

}  // namespace

void OffsetSurface(const StockMesh& given, double degrees, double distance, SurfaceTransfer& output,
                   StageProgress& progress) {
  CheckNumbers(degrees, distance);
  const PreparedSurface surface = Prepare(given, distance, progress);
  CutMesh mesh;
  if (surface.mesh.facets.empty()) {
    progress.Warn("the surface has no facets");
  } else {
    const OffsetPlan plan =
        PlanFor(surface, degrees == 0 ? kDefaultDegrees : degrees, distance, progress);
    mesh = MeshOffset(surface, SideOf(surface, distance), std::abs(distance), plan, progress);
    if (mesh.facets.empty()) progress.Warn("nothing is left of the solid");
  }
  progress.Begin("Writing surface");
  PlayMesh(mesh, output, progress);
}

}  // namespace kernel
