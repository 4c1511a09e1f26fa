// Beside the C library's printf, which is exact for every double here.

#include <bit>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string_view>

#include "toolpaths/FormatNumber.h"

namespace {

bool SameAsPrintf(double value) {
  char expected[512];
  const int length = std::snprintf(expected, sizeof expected, "%20.10f", value);
  char text[kMostNumberCharacters];
  const char* end = FormatNumber(value, text);
  return std::string_view(text, static_cast<std::size_t>(end - text)) ==
         std::string_view(expected, static_cast<std::size_t>(length));
}

// A fixed seed: a failure can be looked at again.
using Random = std::mt19937_64;

TEST(FormatNumberReference, EveryBitPatternIsAsPrintfHasIt) {
  Random random(1);
  for (int i = 0; i < 1000000; ++i) {
    const auto value = std::bit_cast<double>(random());
    ASSERT_TRUE(SameAsPrintf(value)) << std::hexfloat << value;
  }
}

TEST(FormatNumberReference, ValuesOfEverySmallerMagnitudeAreAsPrintfHasThem) {
  Random random(2);
  // Biased exponents from 2^-48 to 2^33: everything between what rounds to 0 and the wide texts.
  std::uniform_int_distribution<std::uint64_t> exponent(1023 - 48, 1023 + 33);
  for (int i = 0; i < 3000000; ++i) {
    const std::uint64_t bits = (random() & 0x800FFFFFFFFFFFFF) | (exponent(random) << 52);
    const auto value = std::bit_cast<double>(bits);
    ASSERT_TRUE(SameAsPrintf(value)) << std::hexfloat << value;
  }
}

// Decimal values as programs have them, and multiples of 2^-11 to 2^-20, where ties are.
TEST(FormatNumberReference, DecimalsAndTiesAreAsPrintfHasThem) {
  Random random(3);
  std::uniform_int_distribution<std::int64_t> whole(-400000000, 400000000);
  for (int i = 0; i < 500000; ++i) {
    const auto n = static_cast<double>(whole(random));
    for (const double value : {n / 10000, n / 1e10, std::ldexp(n, -11), std::ldexp(n, -20)}) {
      ASSERT_TRUE(SameAsPrintf(value)) << std::hexfloat << value;
      ASSERT_TRUE(SameAsPrintf(std::nextafter(value, 1e9))) << std::hexfloat << value;
    }
  }
}

}  // namespace
