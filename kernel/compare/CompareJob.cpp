#include "kernel/compare/CompareJob.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "kernel/common/RunAside.h"
#include "kernel/compare/PreparePart.h"
#include "kernel/compare/SplitIntoBands.h"
#include "kernel/sweep/PlayMesh.h"
#include "kernel/sweep/PrepareStock.h"

namespace kernel {
namespace {

// Shares of the part's diagonal.
constexpr double kFinest = 1.0 / 2000;
constexpr double kExactness = 5e-10;

double LargestCoordinate(const Box3& box) {
  double largest = 0;
  for (int axis = 0; axis < 3; ++axis) {
    largest = std::max({largest, std::abs(box.low[axis]), std::abs(box.high[axis])});
  }
  return largest;
}

// What deviations may be off at a limit: half of what is promised, the proof needs some of the
// rest, and the input's own rounding.
double SlackOf(const Box3& part, const Box3& stock) {
  const double largest = std::max(LargestCoordinate(part), LargestCoordinate(stock));
  return kExactness * part.Diagonal() + 16 * std::numeric_limits<double>::epsilon() * largest;
}

CutMesh Compare(const PreparedPart& part, const PreparedStock& stock, const CompareBands& bands,
                Reporter& reporter) {
  std::optional<StockTree> tree;
  reporter.BeginStage("Preparing stock", 5, 15);
  RunAside(reporter, [&](const Tell& tell) { tree.emplace(stock.mesh, tell); });
  reporter.EndStage();
  CutMesh mesh;
  reporter.BeginStage("Comparing", 15, 95);
  RunAside(reporter, [&](const Tell& tell) {
    mesh = SplitIntoBands(part.mesh, *tree, bands, kFinest * part.box.Diagonal(), tell);
  });
  reporter.EndStage();
  return mesh;
}

}  // namespace

void ComparePart(const StockMesh& givenPart, const StockMesh& givenStock, CompareBands bands,
                 SurfaceTransfer& output, Reporter& reporter) {
  reporter.BeginStage("Reading part and stock", 0, 5);
  PreparedPart part;
  PreparedStock stock;
  RunAside(reporter, [&](const Tell& tell) {
    stock = PrepareStock(givenStock);
    tell(0.5);
    part = PreparePart(givenPart);
  });
  reporter.EndStage();
  if (stock.turned) reporter.Warn("the stock's facets faced inwards and have been turned");
  if (part.turned) reporter.Warn("the part's facets faced inwards and have been turned");
  CutMesh mesh;
  if (part.mesh.facets.empty()) {
    reporter.Warn("the part has no facets");
  } else {
    bands.SetSlack(SlackOf(part.box, stock.box));
    mesh = Compare(part, stock, bands, reporter);
  }
  reporter.BeginStage("Writing result", 95, 100);
  PlayMesh(mesh, output, reporter);
}

}  // namespace kernel
