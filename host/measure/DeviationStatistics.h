#pragma once

#include <array>
#include <functional>
#include <vector>

#include "formats/Mesh.h"
#include "host/measure/FacetTree.h"
#include "host/measure/FarthestPoint.h"

namespace host {

/// A deviation is the distance from the stock's surface: positive where material is left standing,
/// negative in a gouge. Lengths in length units.
struct DeviationPlace {
  double deviation = 0;
  Point place{};
  double bound = 0;  // of its size; proven for the whole surface
};

struct DeviationStatistics {
  static constexpr std::array<double, 9> kPercentages = {1, 5, 10, 25, 50, 75, 90, 95, 99};

  double area = 0;
  std::size_t samples = 0;
  double minimum = 0;
  double maximum = 0;
  double mean = 0;                                        // of the deviation, over the area
  double rootMeanSquare = 0;                              // of the deviation, over the area
  std::array<double, kPercentages.size()> percentiles{};  // of the area, not of the samples
  double meanOfSize = 0;                                  // of the deviation without its sign
  /// The deepest gouges and the highest excesses, the worst first, at places a twentieth of the
  /// diagonal apart or more.
  std::vector<DeviationPlace> gouges;
  std::vector<DeviationPlace> excesses;
  bool stopped = false;  // by the user; nothing else counts then
};

/// The means and percentiles come from samples at the centres of facets, large facets cut up so
/// that there are at least `kLeastSamples` of about the same size; the extremes from a search that
/// bounds the deviation between them.
DeviationStatistics MeasureDeviations(const formats::Mesh& surface, const FacetTree& stock,
                                      const std::function<bool()>& stopAsked);

}  // namespace host
