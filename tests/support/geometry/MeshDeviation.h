#pragma once

#include "formats/Mesh.h"

namespace support {

/// How far a surface is from another one at the most: at least `reached`, which is the distance of
/// a point that was looked at, and at most `bound`.
struct Farthest {
  double reached = 0;
  double bound = 0;
};

/// The farthest that any point of the facets of `from` is from the facets of `to`. Neither mesh
/// needs to be closed. `bound` is no more than `resolution` above `reached`.
///
/// All vertices and facet centres of `from` are looked at. A facet is then split, and its
/// parts again, until each part is known to be no further away than `reached` + `resolution`: by
/// its centre and its size, as the distance changes no faster than the place, or by its three
/// corners and one facet of `to`, from which the distance is a convex function. Splits are
/// along a side of a facet of `to` where one is near, else into four.
Farthest FarthestFrom(const formats::Mesh& from, const formats::Mesh& to, double resolution);

}  // namespace support
