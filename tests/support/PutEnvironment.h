#pragma once

#include <optional>
#include <string>

namespace support {

/// Gives an environment variable a value, or removes it.
void PutEnvironment(const std::string& name, const std::optional<std::string>& value);

}  // namespace support
