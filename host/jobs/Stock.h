#pragma once

#include <array>
#include <string>

#include "formats/Mesh.h"

namespace host {

/// "box:x0,y0,z0,x1,y1,z1", or the name of a mesh file of any format that is read. Throws
/// formats::FileError.
formats::Mesh StockFrom(const std::string& description);

bool IsBox(const std::string& description);

/// Twelve facets of colour 0, seen from outside counter-clockwise.
formats::Mesh BoxMesh(const std::array<double, 3>& low, const std::array<double, 3>& high);

}  // namespace host
