#pragma once

#include <array>
#include <vector>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace compress_test {

/// An edge between two colours, or one where the facets' normals turn by more than 35 degrees.
struct FeatureLine {
  std::array<support::Point, 2> ends;
  std::array<int, 2> colours;  // of the facets at it, the lower one first
};

/// Of a closed mesh.
std::vector<FeatureLine> FeatureLines(const formats::Mesh& mesh);

/// How far ends, middles and quarters of the lines are from lines of `others` that have the same
/// colours.
double FarthestFromLines(const std::vector<FeatureLine>& lines,
                         const std::vector<FeatureLine>& others);

}  // namespace compress_test
