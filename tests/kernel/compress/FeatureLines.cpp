#include "FeatureLines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "support/geometry/MeshChecks.h"

namespace compress_test {
namespace {

using support::Point;

const double kSharpCosine = std::cos(35 * std::acos(-1.0) / 180);

double ToLine(const Point& p, const FeatureLine& line) {
  const Point along = support::Minus(line.ends[1], line.ends[0]);
  const double share = std::clamp(
      support::Dot(support::Minus(p, line.ends[0]), along) / support::Dot(along, along), 0.0, 1.0);
  return support::Length(support::Minus(p, support::Plus(line.ends[0], along, share)));
}

}  // namespace

std::vector<FeatureLine> FeatureLines(const formats::Mesh& mesh) {
  std::map<std::pair<std::int32_t, std::int32_t>, std::size_t> facetOf;
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    const auto& v = mesh.facets[f].vertices;
    for (std::size_t i = 0; i < 3; ++i) facetOf[{v[i], v[(i + 1) % 3]}] = f;
  }
  std::vector<FeatureLine> lines;
  for (const auto& [edge, f] : facetOf) {
    if (edge.first > edge.second) continue;
    const formats::Facet& here = mesh.facets[f];
    const formats::Facet& beyond = mesh.facets[facetOf.at({edge.second, edge.first})];
    const double turn = support::Dot(support::Normal(mesh, here), support::Normal(mesh, beyond));
    if (here.colour == beyond.colour && turn >= kSharpCosine) continue;
    const auto [low, high] = std::minmax({int{here.colour}, int{beyond.colour}});
    lines.push_back({{mesh.vertices[static_cast<std::size_t>(edge.first)],
                      mesh.vertices[static_cast<std::size_t>(edge.second)]},
                     {low, high}});
  }
  return lines;
}

double FarthestFromLines(const std::vector<FeatureLine>& lines,
                         const std::vector<FeatureLine>& others) {
  double farthest = 0;
  for (const FeatureLine& line : lines) {
    for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
      const Point along = support::Minus(line.ends[1], line.ends[0]);
      const Point point = support::Plus(line.ends[0], along, share);
      double nearest = std::numeric_limits<double>::infinity();
      for (const FeatureLine& other : others) {
        if (other.colours == line.colours) nearest = std::min(nearest, ToLine(point, other));
      }
      farthest = std::max(farthest, nearest);
    }
  }
  return farthest;
}

}  // namespace compress_test
