#include "kernel/sweep/SweepJob.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "formats/InterchangeFile.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/FigureText.h"
#include "kernel/common/RunAside.h"
#include "kernel/common/Workers.h"
#include "kernel/sweep/CompressSurface.h"
#include "kernel/sweep/CutMakers.h"
#include "kernel/sweep/MeshModel.h"
#include "kernel/sweep/MoveBoxes.h"
#include "kernel/sweep/PathMoves.h"
#include "kernel/sweep/PlayMesh.h"
#include "kernel/sweep/PrepareStock.h"
#include "kernel/sweep/RaySpacing.h"
#include "kernel/sweep/StockRaster.h"
#include "kernel/sweep/SubtractMoves.h"

namespace kernel {
namespace {

constexpr double kDefaultTolerance = 1e-4;  // of the stock's diagonal
constexpr double kSliver = 1e-11;           // of the stock's diagonal

PathMoves ReadMoves(const std::string& pathFile, Reporter& reporter) {
  reporter.BeginStage("Reading toolpaths", 0, 2);
  std::optional<PathMoves> moves;
  RunAside(reporter, [&](const Tell&) { moves.emplace(formats::ReadInterchangeFile(pathFile)); });
  reporter.EndStage();
  return std::move(*moves);
}

PreparedStock ReadStock(const StockMesh& given, Reporter& reporter) {
  reporter.BeginStage("Preparing stock", 2, 5);
  PreparedStock stock;
  RunAside(reporter, [&](const Tell&) { stock = PrepareStock(given); });
  reporter.EndStage();
  if (stock.turned) reporter.Warn("the stock's facets faced inwards and have been turned");
  return stock;
}

double SweepTolerance(const PathMoves& moves, const Box3& box) {
  double smallest = std::numeric_limits<double>::infinity();
  for (const SweepPath& path : moves.Paths()) {
    const bool given = path.sweepTolerance > 0;
    smallest = std::min(smallest, given ? path.sweepTolerance : kDefaultTolerance * box.Diagonal());
  }
  return smallest;
}

Curvature CurvatureOf(const PathMoves& moves) {
  Curvature curvature;
  for (const SweepPath& path : moves.Paths()) {
    curvature.radius = std::min(curvature.radius, path.tool.CharacteristicRadius());
    const ProfilePiece& tip = path.tool.Profile().front();
    if (!tip.isArc) curvature.tipSlope = std::max(curvature.tipSlope, tip.startNormal.r);
  }
  return curvature;
}

RaySpacing SpacingOf(const PathMoves& moves, const Box3& box, Reporter& reporter) {
  const RaySpacing chosen = ChooseRaySpacing(box, SweepTolerance(moves, box), CurvatureOf(moves));
  if (chosen.raised) {
    reporter.Warn("the sweep tolerance is raised to " + FigureText(chosen.tolerance) +
                  " for lack of memory");
  }
  return chosen;
}

// Whether bodies of the stock run into each other.
bool Rasterise(const StockMesh& stock, DexelModel& model, Reporter& reporter) {
  reporter.BeginStage("Initialising stock", 5, 8);
  std::array<bool, 3> overlapping{};
  RunTasks(
      overlapping.size(),
      [&](std::size_t axis) {
        overlapping[axis] = RasteriseStock(stock, static_cast<int>(axis), model);
      },
      [&](std::size_t done) { reporter.Advance(static_cast<double>(done), 3); });
  reporter.EndStage();
  return overlapping[0] || overlapping[1] || overlapping[2];
}

bool Subtract(const PathMoves& moves, const Box3& box, DexelModel& model, Reporter& reporter) {
  reporter.BeginStage("Sweeping", 8, 60);
  const bool removed = SubtractMoves(moves, box, model, reporter);
  reporter.EndStage();
  return removed;
}

double CompressTolerance(const PathMoves& moves) {
  double smallest = std::numeric_limits<double>::infinity();
  for (const SweepPath& path : moves.Paths()) {
    smallest = std::min(smallest, path.compressTolerance);
  }
  return std::isfinite(smallest) ? smallest : 0;
}

CutMesh AsCutMesh(const StockMesh& stock) {
  const StockMesh parted = WithOwnVertices(stock);
  CutMesh mesh;
  mesh.vertices = parted.vertices;
  mesh.facets.reserve(parted.facets.size());
  for (const StockMesh::Facet& facet : parted.facets) {
    mesh.facets.push_back({facet.vertices, facet.colour});
  }
  return mesh;
}

// Whether a tool comes as far as the stock's box.
bool AnyComesNear(const PathMoves& moves, const Box3& box) {
  const std::vector<Box3> boxes = BoxesWithin(moves, 0, moves.Count(), box);
  return std::any_of(boxes.begin(), boxes.end(),
                     [](const Box3& swept) { return !swept.IsEmpty(); });
}

CutMesh UncutStock(const PreparedStock& stock, double tolerance, Reporter& reporter) {
  return CompressUncut(AsCutMesh(stock.mesh), tolerance, stock.box.Diagonal(), reporter);
}

CutMesh CutStock(const PreparedStock& stock, const PathMoves& moves, Reporter& reporter) {
  const double compression = CompressTolerance(moves);
  if (!AnyComesNear(moves, stock.box)) return UncutStock(stock, compression, reporter);
  const RaySpacing spacing = SpacingOf(moves, stock.box, reporter);
  DexelModel model(DexelLattice(stock.box, spacing.spacing), kSliver * stock.box.Diagonal());
  const bool overlapping = Rasterise(stock.mesh, model, reporter);
  if (!Subtract(moves, stock.box, model, reporter)) {
    return UncutStock(stock, compression, reporter);
  }
  const StockSurface surface(stock.mesh, overlapping);
  return CompressCut(
      MeshModel(model, CutMakers(surface, moves), stock.box, spacing.tolerance, reporter),
      compression, stock.box.Diagonal(), reporter);
}

}  // namespace

void SweepStock(const StockMesh& given, const std::string& pathFile, SurfaceTransfer& output,
                Reporter& reporter) {
  const PathMoves moves = ReadMoves(pathFile, reporter);
  const PreparedStock stock = ReadStock(given, reporter);
  const CutMesh mesh = CutStock(stock, moves, reporter);
  if (mesh.facets.empty()) reporter.Warn("the toolpaths remove the whole stock");
  reporter.BeginStage("Writing result", 95, 100);
  PlayMesh(mesh, output, reporter);
}

}  // namespace kernel
