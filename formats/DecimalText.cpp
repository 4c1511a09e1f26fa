#include "formats/DecimalText.h"

#include <charconv>
#include <limits>

namespace formats {

namespace {

constexpr int kDecimals = 6;
// Sign, digits before and after the point, and the point.
constexpr int kLongest = 1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + kDecimals;

}  // namespace

std::string DecimalText(double figure) {
  char text[kLongest];
  return {text,
          std::to_chars(text, text + sizeof text, figure, std::chars_format::fixed, kDecimals).ptr};
}

}  // namespace formats
