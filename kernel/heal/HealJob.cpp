#include "kernel/heal/HealJob.h"

#include <cmath>
#include <optional>
#include <utility>

#include "formats/BinarySurface.h"
#include "formats/MeshMeasures.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/RunAside.h"
#include "kernel/heal/FindCrossings.h"
#include "kernel/heal/LinkSound.h"
#include "kernel/heal/MendSurface.h"
#include "kernel/heal/ReplaceFile.h"
#include "kernel/heal/SurfaceFile.h"

namespace kernel {
namespace {

void CheckTolerance(double tolerance) {
  if (std::isfinite(tolerance) && tolerance >= 0) return;
  throw FatalError("tolerance: not a number of 0 or more");
}

formats::Mesh Read(const std::string& path, StageProgress& progress) {
  progress.Begin("Reading surface");
  formats::Mesh mesh;
  RunAside(progress, [&](const Tell&) { mesh = formats::ReadBinarySurface(path); });
  progress.End();
  return mesh;
}

bool IsHealthy(const formats::Mesh& given, StageProgress& progress) {
  SurfaceMesh mesh;
  bool sound = false;
  progress.Begin("Preparing surface");
  RunAside(progress, [&](const Tell&) {
    mesh = SurfaceOf(given);
    sound = LinkSound(mesh, kLeastHeight * mesh.Bounds().Diagonal()).has_value();
  });
  progress.End();
  if (!sound) return false;
  progress.Begin("Scanning for crossing facets");
  const CrossingPairs pairs =
      FindCrossings(mesh, true, [&](double share) { progress.Advance(share); });
  progress.End();
  return pairs.empty();
}

SurfaceMesh JoinedByPlace(formats::Mesh given, StageProgress& progress) {
  SurfaceMesh mesh;
  progress.Begin("Initialising surface");
  RunAside(progress, [&](const Tell&) {
    formats::JoinCoincidentVertices(given);
    mesh = SurfaceOf(given);
  });
  progress.End();
  return mesh;
}

formats::Mesh Mend(formats::Mesh given, double tolerance, StageProgress& progress) {
  return FileMeshOf(MendSurface(JoinedByPlace(std::move(given), progress), tolerance, progress));
}

}  // namespace

void HealSurface(double tolerance, const std::string& inputFile, const std::string& outputFile,
                 StageProgress& progress) {
  CheckTolerance(tolerance);
  formats::Mesh mesh = Read(inputFile, progress);
  if (!IsHealthy(mesh, progress)) mesh = Mend(std::move(mesh), tolerance, progress);
  if (mesh.facets.empty()) progress.Warn("the surface has no facets");
  ReplaceFile(outputFile, [&](const std::string& path) {
    progress.Begin("Writing surface");
    RunAside(progress, [&](const Tell&) { formats::WriteBinarySurface(path, mesh); });
    // Nothing is called back once the file is in its place: a stop would come too late.
    progress.End();
  });
}

}  // namespace kernel
