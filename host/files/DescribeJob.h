#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace host {

/// All that `info` says of a job directory: "job", "paths" (how many of the per-path files take
/// part) and "files", each as DescribeFile has it, in the order in which a job uses them. A file
/// that does not belong to the job's present state is marked with "stale": true; "remarks" say why.
/// One that cannot be read has "error" in place of its contents. A diagnostic copy is compared with
/// its original and described only when that is missing. Throws formats::FileError when there is no
/// such directory.
nlohmann::ordered_json DescribeJob(const std::string& directory);

}  // namespace host
