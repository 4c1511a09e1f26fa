#pragma once

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace compare_test {

/// 100 by 80 by 30 from the origin, in colour 5.
formats::Mesh Block();

/// The block with a square pit in the middle of its upper face; a boss when the depth is below 0.
formats::Mesh PittedBlock(double width, double depth);

/// A torus about the z axis, radii 10 and 4, two facets a cell.
formats::Mesh Torus(int round, int across);

/// A prism over a triangle that is 10 long and only 2 * `halfWidth` wide at one end and sharp at
/// the other (at the origin), from z = 0 to 5.
formats::Mesh Wedge(double halfWidth);

/// A pyramid 10 high over a square of side 2 * `halfWidth` in the plane z = 0; its tip lies at
/// (0, 0, 10).
formats::Mesh Spike(double halfWidth);

/// Adds a mesh with its own vertices.
void Add(formats::Mesh& mesh, const formats::Mesh& other);

/// Turns all facets over.
formats::Mesh Reversed(formats::Mesh mesh);

formats::Mesh Moved(formats::Mesh mesh, double factor, const support::Point& by);

}  // namespace compare_test
