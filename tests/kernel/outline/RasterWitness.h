#pragma once

#include <array>
#include <vector>

#include "OutlineRun.h"

namespace outline_test {

/// What lies on one upright line, as stretches [low, high] in ascending order that do not touch.
using Stretches = std::vector<std::array<double, 2>>;

/// Where the line at x lies under a facet, worked out facet by facet.
Stretches ShadowAt(const formats::Mesh& mesh, double x);

/// The distances from the x axis that the surface has at x, worked out facet by facet; with
/// `isClosed` those that only the inside has as well.
Stretches SpunAt(const formats::Mesh& mesh, double x, bool isClosed);

/// Where the line at x lies inside the curves. Fails the test where they do not wind once around
/// it.
Stretches InsideAt(const Curves& curves, double x);

/// How much lies in just one of the two.
double Difference(const Stretches& a, const Stretches& b);

double Length(const Stretches& stretches);

/// Areas by so many upright lines at even distances across the mesh: of what the witness finds, and
/// of what lies only in it or only inside the curves.
struct RasterAreas {
  double witness = 0, difference = 0;
};
template <typename Witness>
RasterAreas CompareAreas(double low, double high, int lines, const Curves& curves,
                         const Witness& witness) {
  RasterAreas areas;
  const double step = (high - low) / lines;
  for (int i = 0; i < lines; ++i) {
    const double x = low + (i + 0.5) * step;
    const Stretches stretches = witness(x);
    areas.witness += step * Length(stretches);
    areas.difference += step * Difference(stretches, InsideAt(curves, x));
  }
  return areas;
}

double LengthOf(const Curves& curves);

/// The least and the greatest x of the mesh.
std::array<double, 2> WidthOf(const formats::Mesh& mesh);
double DiagonalOf(const formats::Mesh& mesh);

}  // namespace outline_test
