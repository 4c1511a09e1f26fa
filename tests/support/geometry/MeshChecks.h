#pragma once

#include <array>
#include <string>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

/// What keeps the mesh from being closed, edge-manifold and consistently turned by vertex number
/// (every edge in exactly two facets, once in each direction), or from having vertex numbers in
/// range; empty when nothing does. An empty mesh is closed.
std::string ClosedFault(const formats::Mesh& mesh);

/// Names the first facet that has no area (two equal corners, or all three on one line); empty when
/// there is none.
std::string ZeroAreaFault(const formats::Mesh& mesh);

/// Names the first vertex that more than one fan of facets shares; empty when there is none.
std::string VertexFault(const formats::Mesh& mesh);

/// Enclosed volume; below 0 when the facets face inwards. The mesh must be closed.
double Volume(const formats::Mesh& mesh);

/// Corners, centre and unit normal of a facet.
std::array<Point, 3> Corners(const formats::Mesh& mesh, const formats::Facet& facet);
Point Centre(const formats::Mesh& mesh, const formats::Facet& facet);
Point Normal(const formats::Mesh& mesh, const formats::Facet& facet);

/// A box along the axes, closed and outward, 8 vertices and 12 facets.
formats::Mesh Box(const Point& low, const Point& high, std::uint8_t colour);

}  // namespace support
