#include "support/PutEnvironment.h"

#include <stdlib.h>

namespace support {

void PutEnvironment(const std::string& name, const std::optional<std::string>& value) {
  // An empty value removes a variable here.
  _putenv_s(name.c_str(), value.value_or("").c_str());
}

}  // namespace support
