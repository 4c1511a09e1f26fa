#include "kernel/silhouette/SilhouetteJob.h"

#include <cmath>

#include "formats/BinarySurface.h"
#include "kernel/common/Box3.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/RunAside.h"
#include "kernel/heal/ReplaceFile.h"
#include "kernel/outline/OutlineOf.h"
#include "kernel/outline/PlaneGrid.h"
#include "kernel/outline/SimplifyLoops.h"
#include "kernel/outline/UniteEdges.h"
#include "kernel/silhouette/CurvesFile.h"
#include "kernel/silhouette/ShadowEdges.h"

namespace kernel {
namespace {

void CheckDistance(double distance) {
  if (std::isfinite(distance) && distance >= 0) return;
  throw FatalError("distance: not a number of 0 or more");
}

// Runs `work` on a thread of its own as a stage that cannot say how far it is.
template <typename Work>
void RunStage(StageProgress& progress, const char* text, const Work& work) {
  progress.Begin(text);
  RunAside(progress, [&](const Tell& tell) { work([&] { tell(0); }); });
  progress.End();
}

void CheckFinite(const formats::Mesh& mesh) {
  for (std::size_t v = 0; v < mesh.vertices.size(); ++v) {
    const auto& [x, y, z] = mesh.vertices[v];
    if (IsFinite({x, y, z})) continue;
    throw FatalError("vertex " + std::to_string(v + 1) + ": a coordinate is not finite");
  }
}

// Of the vertices that facets use.
Box3 BoxOf(const formats::Mesh& mesh) {
  std::vector<bool> used(mesh.vertices.size(), false);
  for (const formats::Facet& facet : mesh.facets) {
    for (const std::int32_t vertex : facet.vertices) used[static_cast<std::size_t>(vertex)] = true;
  }
  Box3 box;
  for (std::size_t v = 0; v < used.size(); ++v) {
    const auto& [x, y, z] = mesh.vertices[v];
    if (used[v]) box.Include({x, y, z});
  }
  return box;
}

std::vector<Point2> SeenFromAbove(const formats::Mesh& mesh) {
  std::vector<Point2> points;
  points.reserve(mesh.vertices.size());
  for (const auto& vertex : mesh.vertices) points.push_back({vertex[0], vertex[1]});
  return points;
}

std::vector<Loop> Silhouette(const formats::Mesh& mesh, const Box3& box, double distance,
                             StageProgress& progress) {
  const PlaneGrid grid({box.low.x, box.low.y}, {box.high.x, box.high.y});
  const std::vector<Point2> originals = SeenFromAbove(mesh);
  std::vector<PlaneEdge> edges;
  RunStage(progress, "Preparing edges", [&](const auto& tell) {
    std::vector<Point2> points;
    points.reserve(originals.size());
    for (const Point2& original : originals) points.push_back(grid.Snap(original));
    edges = ShadowEdges(mesh, points, tell);
  });
  std::vector<Loop> loops;
  RunStage(progress, "Generating outline", [&](const auto& tell) {
    loops = OutlineOf(UniteEdges(std::move(edges), tell), tell);
    if (distance > 0) loops = SimplifyLoops(loops, grid.Cells(distance), tell);
    loops = PlacedLoops(loops, grid, originals, tell);
  });
  return loops;
}

}  // namespace

void TraceSilhouette(const std::string& inputFile, const std::string& outputFile, double distance,
                     StageProgress& progress) {
  CheckDistance(distance);
  formats::Mesh mesh;
  Box3 box;
  RunStage(progress, "Reading surface", [&](const auto&) {
    mesh = formats::ReadBinarySurface(inputFile);
    CheckFinite(mesh);
    box = BoxOf(mesh);
  });
  std::vector<Loop> loops;
  if (!mesh.facets.empty()) loops = Silhouette(mesh, box, distance, progress);
  if (loops.empty()) progress.Warn("the surface has no shadow");
  ReplaceFile(outputFile, [&](const std::string& path) {
    // Nothing is called back once the file is in its place: a stop would come too late.
    RunStage(progress, "Writing outline",
             [&](const auto&) { WriteTreeCurves(path, loops, box.IsEmpty() ? 0 : box.low.z); });
  });
}

}  // namespace kernel
