#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace host {

/// What DescribeFile says, as lines for people; `units` is the name of the length unit.
std::vector<std::string> DescriptionText(const nlohmann::ordered_json& description,
                                         const std::string& units);

}  // namespace host
