#pragma once

#include "host/measure/Point.h"

namespace host {

/// The point of the triangle, its rim included, that is nearest to `p`; also of one without area.
Point NearestOnFacet(const Triangle& triangle, const Point& p);

}  // namespace host
