#include "kernel/spin/SpinJob.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "kernel/common/Box3.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/FigureText.h"
#include "kernel/common/RunAside.h"
#include "kernel/outline/OutlineOf.h"
#include "kernel/outline/PlaneGrid.h"
#include "kernel/outline/SimplifyLoops.h"
#include "kernel/outline/UniteEdges.h"
#include "kernel/spin/SendLoops.h"
#include "kernel/spin/SpunArc.h"
#include "kernel/spin/SpunEdges.h"
#include "kernel/spin/SpunGroups.h"
#include "kernel/sweep/PrepareStock.h"
#include "kernel/sweep/WeldVertices.h"

namespace kernel {
namespace {

constexpr double kDefaultTolerance = 1e-4;  // of the diagonal
// Of the tolerance, for each arc by itself: where two arcs meet, their corner moves by more than
// either of them does, by the arcs' share divided by the sine of half the angle between them. So it
// stays within the tolerance down to 7.2 degrees.
constexpr double kArcShare = 1.0 / 16;

// The outline on its grid, from which it can be simplified further.
struct SpunOutline {
  PlaneGrid grid{{0, 0}, {0, 0}};
  std::vector<Point2> originals;
  std::vector<Loop> loops;

  std::vector<Loop> Placed(double furtherTolerance) const {
    const std::function<void()> tell = [] {};
    if (furtherTolerance == 0) return PlacedLoops(loops, grid, originals, tell);
    return PlacedLoops(SimplifyLoops(loops, grid.Cells(furtherTolerance), tell), grid, originals,
                       tell);
  }
};

void CheckDistance(double distance) {
  if (std::isfinite(distance) && distance >= 0) return;
  throw FatalError("distance: not a number of 0 or more");
}

double Diagonal(const StockMesh& mesh) {
  Box3 box;
  for (const Vec3& vertex : mesh.vertices) box.Include(vertex);
  return box.Diagonal();
}

PlaneGrid GridOver(const std::vector<Point2>& spun) {
  Point2 low{Box3::kInfinity, 0}, high{-Box3::kInfinity, 0};
  for (const Point2& point : spun) {
    low.x = std::min(low.x, point.x);
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
  }
  return {low, high};
}

std::vector<Point2> SpunVertices(const StockMesh& mesh) {
  std::vector<Point2> spun;
  spun.reserve(mesh.vertices.size());
  for (const Vec3& vertex : mesh.vertices) spun.push_back(Spun(vertex));
  return spun;
}

std::vector<PlaneEdge> OnGrid(const std::vector<SpunEdge>& spun, const PlaneGrid& grid) {
  std::vector<PlaneEdge> edges;
  edges.reserve(spun.size());
  for (const SpunEdge& edge : spun) {
    edges.push_back({grid.Snap(edge.from), grid.Snap(edge.to), edge.step});
  }
  return edges;
}

SpunOutline Outline(const StockMesh& mesh, double tolerance, const Tell& tell) {
  SpunOutline outline;
  outline.originals = SpunVertices(mesh);
  outline.grid = GridOver(outline.originals);
  std::vector<SpunEdge> section;
  if (CountOpenEdges(mesh) == 0) section = SectionEdges(mesh);
  for (const SpunEdge& edge : section) outline.originals.push_back(edge.from);
  tell(0);
  const SpunGroups groups(mesh);
  const auto group = [&](std::size_t i) {
    // The section is to be wound around as a whole.
    if (i == groups.Count()) return OnGrid(section, outline.grid);
    return OnGrid(SpunBorders(mesh, groups.Facets(i), kArcShare * tolerance), outline.grid);
  };
  outline.loops = OutlineOf(UniteGroups(groups.Count() + 1, group, tell), [&] { tell(1); });
  return outline;
}

std::string RaisedText(double tolerance) {
  return "the tolerance is raised to " + FigureText(tolerance) +
         ", as the output takes no more points";
}

// Sends the outline, coarser and coarser until the channel takes it all. Returns the tolerance that
// it took.
double SendAll(const SpunOutline& outline, double tolerance, double diagonal, CurveTransfer& output,
               StageProgress& progress) {
  for (double raised = tolerance;; raised *= 2) {
    if (raised > diagonal && raised > tolerance) {
      throw FatalError("the output takes too few points for the outline");
    }
    const std::vector<Loop> loops = outline.Placed(raised - tolerance);
    const std::size_t sent = SendLoops(loops, output, progress);
    if (sent == CountPoints(loops)) return raised;
    if (sent == 0) throw FatalError("the output takes no points");
  }
}

}  // namespace

void TraceSpunOutline(const StockMesh& given, double distance, CurveTransfer& output,
                      StageProgress& progress) {
  CheckDistance(distance);
  CheckFinite(given, "surface");
  StockMesh mesh;
  progress.Begin("Preparing surface");
  RunAside(progress, [&](const Tell&) { mesh = WeldVertices(given); });
  progress.End();
  const double diagonal = Diagonal(mesh);
  if (!std::isfinite(diagonal)) throw FatalError("the surface is too large to measure");
  const double tolerance = distance > 0 ? distance : kDefaultTolerance * diagonal;
  SpunOutline outline;
  if (!mesh.facets.empty()) {
    progress.Begin("Generating outline");
    RunAside(progress, [&](const Tell& tell) { outline = Outline(mesh, tolerance, tell); });
    progress.End();
  }
  if (outline.loops.empty()) progress.Warn("the spun surface covers nothing");
  progress.Begin("Writing outline");
  const double used = SendAll(outline, tolerance, diagonal, output, progress);
  progress.End();
  if (used > tolerance) progress.Warn(RaisedText(used));
  output.Close();
}

}  // namespace kernel
