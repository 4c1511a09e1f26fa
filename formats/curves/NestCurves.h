#pragma once

#include <vector>

#include "formats/curves/CurveMeasures.h"

namespace formats {

// Fills in `outside` and `depth` of each curve; their areas must be there already.
void NestCurves(const Curves& curves, std::vector<CurveMeasures>& measures);

}  // namespace formats
