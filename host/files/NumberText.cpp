#include "host/files/NumberText.h"

#include <charconv>
#include <cmath>

namespace host {

std::string NumberText(const nlohmann::ordered_json& value) {
  if (value.is_null()) return "not finite";
  if (!value.is_number_float()) return value.dump();
  const auto number = value.get<double>();
  if (!std::isfinite(number)) return "not finite";
  char digits[40];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 9).ptr;
  return {digits, end};
}

std::string BoxText(const nlohmann::ordered_json& box) {
  if (box.is_null()) return "none";
  std::string text;
  for (size_t axis = 0; axis < 3; ++axis) {
    if (axis > 0) text += ", ";
    text += std::string(1, "xyz"[axis]) + " " + NumberText(box["lower"][axis]) + " .. " +
            NumberText(box["upper"][axis]);
  }
  return text;
}

}  // namespace host
