#pragma once

#include <string>

namespace formats {

/// A figure with six decimals, as error texts show it: "12.500000", with a decimal point in every
/// locale. "inf", "-inf", "nan" and "-nan" for what has none.
std::string DecimalText(double figure);

}  // namespace formats
