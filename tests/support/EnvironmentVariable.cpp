#include "support/EnvironmentVariable.h"

#include <cstdlib>
#include <utility>

#include "support/PutEnvironment.h"

namespace support {

EnvironmentVariable::EnvironmentVariable(std::string name, const std::optional<std::string>& value)
    : m_name(std::move(name)) {
  if (const char* before = std::getenv(m_name.c_str())) m_before = before;
  PutEnvironment(m_name, value);
}

EnvironmentVariable::~EnvironmentVariable() { PutEnvironment(m_name, m_before); }

}  // namespace support
