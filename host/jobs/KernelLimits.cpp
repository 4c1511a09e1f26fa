#include "host/jobs/KernelLimits.h"

#include <cmath>

#include "formats/MeshMeasures.h"

namespace host {

std::string WhyPathCannotBeCut(const formats::PathRecord& path) {
  if (path.pathType != 1) return "moves in 5 axes, which the kernel cannot cut yet";
  if (!std::holds_alternative<formats::ConvexTool>(path.tool)) {
    return "is no standard convex tool, and the kernel cannot cut with others yet";
  }
  return "";
}

std::string WhyStockCannotBeCut(const formats::Mesh& stock) {
  if (stock.facets.empty()) return "has no facets";
  for (const auto& vertex : stock.vertices) {
    for (const double coordinate : vertex) {
      if (!std::isfinite(coordinate)) return "has a coordinate that is not a finite number";
    }
  }
  // The kernel takes vertices of equal coordinates for one.
  formats::Mesh joined = stock;
  formats::JoinCoincidentVertices(joined);
  const auto topology = formats::AnalyseTopology(joined);
  if (!topology.IsClosed()) {
    return "is open (edges with a facet on one side only: " + std::to_string(topology.openEdges) +
           "), and the kernel cuts closed solids only";
  }
  return "";
}

}  // namespace host
