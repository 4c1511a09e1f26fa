#pragma once

#include <optional>
#include <string>

#include "formats/curves/Curves.h"

namespace formats {

// "binary curves" or "binary tree_curves", as the file's first bytes have it.
const char* NameOf(CurvesVariant variant);

// By the first bytes; none for another file. Throws FileError when the file cannot be read.
std::optional<CurvesVariant> CurvesVariantByContent(const std::string& path);

// A binary curves file of either variant; a file without curves is a whole one. Coordinates are
// passed on as they stand, NaN included. Throws FileError for a file that ends early, a point
// number that the file does not have, a curve of fewer than two segments and one that is not closed
// or whose segments do not follow each other.
Curves ReadCurves(const std::string& path);

}  // namespace formats
