#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace host {

/// A number as descriptions show it: nine digits, whatever the locale; "not finite" for null and
/// what will be null in JSON.
std::string NumberText(const nlohmann::ordered_json& value);

/// "x 0 .. 1, y 0 .. 2, z 0 .. 3" of an object with "lower" and "upper"; "none" for null.
std::string BoxText(const nlohmann::ordered_json& box);

}  // namespace host
