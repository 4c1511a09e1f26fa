#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace host {

/// What DescribeCurves says, as lines for people; of many curves the first ones only.
std::vector<std::string> CurvesText(const nlohmann::ordered_json& description,
                                    const std::string& units);

}  // namespace host
