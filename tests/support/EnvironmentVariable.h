#pragma once

#include <optional>
#include <string>

namespace support {

/// An environment variable that has a value, or is not there, while the object lives; then it is
/// what it was before. What this process reads with std::getenv follows, on every system.
class EnvironmentVariable {
 public:
  /// Without a value the variable is not there.
  EnvironmentVariable(std::string name, const std::optional<std::string>& value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  std::string m_name;
  std::optional<std::string> m_before;
};

}  // namespace support
