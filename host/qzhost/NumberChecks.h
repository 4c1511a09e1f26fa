#pragma once

#include <CLI/CLI.hpp>
#include <cmath>
#include <string>

namespace host {

// The library's own checks let "nan" pass and spell out the largest double when they fail.
template <typename Accepts>
CLI::Validator NumberCheck(const std::string& wanted, Accepts accepts) {
  const auto check = [wanted, accepts](const std::string& text) -> std::string {
    double number = 0.0;
    const bool taken =
        CLI::detail::lexical_cast(text, number) && std::isfinite(number) && accepts(number);
    return taken ? "" : text + " is not " + wanted;
  };
  return CLI::Validator(check, "");
}

/// For an option's value: a finite number above zero.
inline CLI::Validator NumberAboveZero() {
  return NumberCheck("a number above 0", [](double number) { return number > 0.0; });
}

/// For an option's value: a finite number, zero or above.
inline CLI::Validator NumberFromZero() {
  return NumberCheck("a number from 0 up", [](double number) { return number >= 0.0; });
}

}  // namespace host
