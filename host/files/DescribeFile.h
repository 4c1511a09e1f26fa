#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "formats/Mesh.h"
#include "formats/ToolpathRecords.h"
#include "formats/curves/Curves.h"

namespace host {

/// All that `info` says of one file: "file", "kind", "bytes", and what the kind has to say. Numbers
/// that are not finite come out as null. Throws formats::FileError for a file that cannot be read
/// or is not what its name or its first bytes say.
nlohmann::ordered_json DescribeFile(const std::string& path);

/// Sizes, topology and colours.
nlohmann::ordered_json DescribeMesh(const formats::Mesh& mesh);

/// Points, segments, lengths, areas, and of each curve which one it lies in, by its number from 1.
nlohmann::ordered_json DescribeCurves(const formats::Curves& curves);

/// Tool, tolerances, placement; cuts, positions, the box of the tip positions as they stand in the
/// file, and the length of the moves between them.
nlohmann::ordered_json DescribePath(const formats::PathRecord& record);

}  // namespace host
