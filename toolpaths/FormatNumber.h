#pragma once

#include <cstddef>
#include <cstdint>

/// The most characters that FormatNumber writes.
inline constexpr std::size_t kMostNumberCharacters = 330;

/// Writes what printf writes for "%20.10f", digits exact for every double (the exact binary value
/// rounded half to even), no terminating zero; returns the end. Infinities and not-a-number come
/// out as "inf", "-inf", "nan", "-nan" on every system. No locale has a say.
char* FormatNumber(double value, char* to);

/// Writes what printf writes for "%d"; the same rules.
char* FormatNumber(std::int32_t value, char* to);
