#include "formats/programs/GCodeVariables.h"

namespace formats {

std::optional<double> GCodeVariables::GetNamed(std::string_view name) const {
  const auto found = named_.find(name);
  return found == named_.end() ? std::nullopt : std::optional<double>(found->second);
}

void GCodeVariables::SetNamed(std::string_view name, double value) {
  const auto found = named_.find(name);
  if (found != named_.end()) {
    found->second = value;
  } else {
    named_.emplace(name, value);
  }
}

}  // namespace formats
