// Digits of the text form: by hand on every system, and beside the C library's printf where that is
// the reference.

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "toolpaths/FormatNumber.h"

namespace {

std::string Text(double value) {
  char text[kMostNumberCharacters];
  return {text, FormatNumber(value, text)};
}

std::string Text(std::int32_t value) {
  char text[kMostNumberCharacters];
  return {text, FormatNumber(value, text)};
}

double FromBits(std::uint64_t bits) { return std::bit_cast<double>(bits); }

TEST(FormatNumber, RightAlignsInTwentyColumnsWithTenDecimals) {
  EXPECT_EQ(Text(0.0), "        0.0000000000");
  EXPECT_EQ(Text(1.0), "        1.0000000000");
  EXPECT_EQ(Text(-12.5), "      -12.5000000000");
  EXPECT_EQ(Text(0.1), "        0.1000000000");
  EXPECT_EQ(Text(123.456), "      123.4560000000");
  EXPECT_EQ(Text(9999999.25), "  9999999.2500000000");
  EXPECT_EQ(Text(99999999.5), " 99999999.5000000000");
  EXPECT_EQ(Text(-99999999.5), "-99999999.5000000000");
  EXPECT_EQ(Text(99999998.0), " 99999998.0000000000");
}

TEST(FormatNumber, GrowsBeyondTwentyColumns) {
  EXPECT_EQ(Text(999999999.0), "999999999.0000000000");
  EXPECT_EQ(Text(-999999999.0), "-999999999.0000000000");
  EXPECT_EQ(Text(1234567890123.0), "1234567890123.0000000000");
  EXPECT_EQ(Text(9007199254740993.0), "9007199254740992.0000000000");
}

TEST(FormatNumber, KeepsTheSignOfZeroAndOfWhatRoundsToIt) {
  EXPECT_EQ(Text(-0.0), "       -0.0000000000");
  EXPECT_EQ(Text(-1e-300), "       -0.0000000000");
  EXPECT_EQ(Text(-std::numeric_limits<double>::denorm_min()), "       -0.0000000000");
  EXPECT_EQ(Text(std::numeric_limits<double>::denorm_min()), "        0.0000000000");
  EXPECT_EQ(Text(1e-11), "        0.0000000000");
  EXPECT_EQ(Text(1e-10), "        0.0000000001");
}

// 2^-11 = 0.00048828125 has eleven decimals, so odd multiples of it lie exactly between two texts.
TEST(FormatNumber, RoundsTiesToTheEvenDigit) {
  EXPECT_EQ(Text(0.00048828125), "        0.0004882812");
  EXPECT_EQ(Text(3 * 0.00048828125), "        0.0014648438");
  EXPECT_EQ(Text(-5 * 0.00048828125), "       -0.0024414062");
  EXPECT_EQ(Text(1 + 0.00048828125), "        1.0004882812");
  EXPECT_EQ(Text(1 + 3 * 0.00048828125), "        1.0014648438");
}

// One unit in the last place beside a tie.
TEST(FormatNumber, RoundsByTheExactBinaryValue) {
  EXPECT_EQ(Text(std::nextafter(0.00048828125, 1)), "        0.0004882813");
  EXPECT_EQ(Text(std::nextafter(0.00048828125, 0)), "        0.0004882812");
  EXPECT_EQ(Text(std::nextafter(3 * 0.00048828125, 0)), "        0.0014648437");
  // The double nearest to 5e-11 lies just above the tie, its lower neighbour below.
  EXPECT_EQ(Text(5e-11), "        0.0000000001");
  EXPECT_EQ(Text(std::nextafter(5e-11, 0)), "        0.0000000000");
}

TEST(FormatNumber, CarriesThroughNines) {
  EXPECT_EQ(Text(0.99999999996), "        1.0000000000");
  EXPECT_EQ(Text(std::nextafter(1e8, 0)), " 99999999.9999999851");
  EXPECT_EQ(Text(1e8), "100000000.0000000000");
  EXPECT_EQ(Text(9.99999999999), "       10.0000000000");
}

TEST(FormatNumber, WritesTheLargestValuesInFull) {
  const std::string largest = Text(std::numeric_limits<double>::max());
  EXPECT_EQ(largest.size(), 309u + 1 + 10);
  EXPECT_EQ(largest.substr(0, 30), "179769313486231570814527423731");
  EXPECT_EQ(largest.substr(290), "0404026184124858368.0000000000");
  EXPECT_EQ(Text(-std::numeric_limits<double>::max()), "-" + largest);
  EXPECT_EQ(Text(1e22), "10000000000000000000000.0000000000");
  EXPECT_EQ(Text(1e23), "99999999999999991611392.0000000000");
}

TEST(FormatNumber, NamesInfinitiesAndNotANumberWithTheirSign) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Text(infinity), "                 inf");
  EXPECT_EQ(Text(-infinity), "                -inf");
  EXPECT_EQ(Text(FromBits(0x7FF8000000000000)), "                 nan");
  EXPECT_EQ(Text(FromBits(0xFFF8000000000000)), "                -nan");
  EXPECT_EQ(Text(FromBits(0xFFF0000000000001)), "                -nan");
}

TEST(FormatNumber, WritesIntegersAsTheyAre) {
  EXPECT_EQ(Text(std::int32_t{0}), "0");
  EXPECT_EQ(Text(std::int32_t{-1}), "-1");
  EXPECT_EQ(Text(std::numeric_limits<std::int32_t>::min()), "-2147483648");
  EXPECT_EQ(Text(std::numeric_limits<std::int32_t>::max()), "2147483647");
}

}  // namespace
