#pragma once

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

/// How often a closed mesh winds around a point: the solid angles of all its facets over 4 pi, a
/// whole number but for rounding wherever the point is off the surface.
/// Source: van Oosterom and Strackee, "The Solid Angle of a Plane Triangle" (1983).
double WindingNumber(const formats::Mesh& solid, const Point& point);

/// The distance of a point to the surface, by looking at every facet; above 0 inside.
double PlainDeviation(const formats::Mesh& solid, const Point& point);

}  // namespace support
