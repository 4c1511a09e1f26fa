#pragma once

#include <cstddef>

#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace support {

/// A ball as a scanner sees it: 8 `rows`² facets in colour 1, 4 `rows`² + 2 vertices, each further
/// out or in than `radius` by up to `noise`, the same ones on every system.
formats::Mesh ScannedBall(std::size_t rows, double radius, double noise, const Point& centre);

}  // namespace support
