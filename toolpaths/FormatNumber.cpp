#include "toolpaths/FormatNumber.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

// Notation: |value| = m * 2^e with an integer m below 2^53. Wanted is the integer
// n = |value| * 10^10, rounded half to even, whose last ten digits are the decimals. Since
// 10^10 = 2^10 * 5^10, n is the product m * 5^10, which has at most 77 bits, shifted right by
// -(e + 10) places; what is shifted out decides the rounding, so nothing is ever inexact.

namespace {

constexpr std::size_t kWidth = 20;
constexpr int kDecimals = 10;
constexpr std::uint64_t kFiveToTheTenth = 9765625;
constexpr std::uint64_t kTenToTheTenth = 10000000000;
// Below it the integer part and a sign fit the nine columns in front of the point; doubles are too
// sparse there for one to be rounded up to it.
constexpr double kShortLimit = 1e8;

constexpr char kPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

void PutPair(std::uint32_t pair, char* to) { std::memcpy(to, kPairs + 2 * pair, 2); }

void PutEightDigits(std::uint32_t value, char* to) {
  const std::uint32_t high = value / 10000;
  const std::uint32_t low = value % 10000;
  PutPair(high / 100, to);
  PutPair(high % 100, to + 2);
  PutPair(low / 100, to + 4);
  PutPair(low % 100, to + 6);
}

bool RoundsUp(std::uint64_t remainder, std::uint64_t half, std::uint64_t quotient) {
  return remainder > half || (remainder == half && (quotient & 1) != 0);
}

// (high * 2^64 + low) / 2^shift, rounded half to even. high < 2^13, shift from 16 on; the caller
// knows that the result fits.
std::uint64_t ShiftRounded(std::uint64_t high, std::uint64_t low, unsigned shift) {
  if (shift < 64) {
    const std::uint64_t quotient = (high << (64 - shift)) | (low >> shift);
    const std::uint64_t remainder = low & ((std::uint64_t{1} << shift) - 1);
    return quotient + (RoundsUp(remainder, std::uint64_t{1} << (shift - 1), quotient) ? 1 : 0);
  }
  if (shift == 64) return high + (RoundsUp(low, std::uint64_t{1} << 63, high) ? 1 : 0);
  // The product is less than 2^77: a quarter of the last place at most.
  if (shift > 78) return 0;
  const unsigned rest = shift - 64;
  const std::uint64_t quotient = high >> rest;
  // One bit more for whatever is left in the low word: it only breaks a tie.
  const std::uint64_t remainder =
      ((high & ((std::uint64_t{1} << rest) - 1)) << 1) | (low != 0 ? 1 : 0);
  return quotient + (RoundsUp(remainder, std::uint64_t{1} << rest, quotient) ? 1 : 0);
}

// |value| * 10^10, for |value| below kShortLimit; `bits` are the value's.
std::uint64_t Scaled(std::uint64_t bits) {
  const auto biased = static_cast<unsigned>(bits >> 52) & 0x7FF;
  std::uint64_t m = bits & ((std::uint64_t{1} << 52) - 1);
  if (biased != 0) m |= std::uint64_t{1} << 52;
  // e = (biased or 1) - 1075
  const unsigned shift = 1065 - (biased != 0 ? biased : 1);
  const std::uint64_t lowProduct = (m & 0xFFFFFFFF) * kFiveToTheTenth;
  const std::uint64_t highProduct = (m >> 32) * kFiveToTheTenth;
  const std::uint64_t low = lowProduct + (highProduct << 32);
  const std::uint64_t high = (highProduct >> 32) + (low < lowProduct ? 1 : 0);
  return ShiftRounded(high, low, shift);
}

char* FormatShort(std::uint64_t bits, char* to) {
  const std::uint64_t n = Scaled(bits);
  const std::uint64_t decimals = n % kTenToTheTenth;
  auto whole = static_cast<std::uint32_t>(n / kTenToTheTenth);
  std::memset(to, ' ', kWidth);
  PutEightDigits(static_cast<std::uint32_t>(decimals % 100000000), to + 12);
  PutPair(static_cast<std::uint32_t>(decimals / 100000000), to + 10);
  to[9] = '.';
  char* first = to + 9;
  do {
    *--first = static_cast<char>('0' + whole % 10);
    whole /= 10;
  } while (whole != 0);
  if ((bits >> 63) != 0) *--first = '-';
  return to + kWidth;
}

char* PutRightAligned(std::string_view text, char* to) {
  if (text.size() < kWidth) {
    std::memset(to, ' ', kWidth - text.size());
    to += kWidth - text.size();
  }
  std::memcpy(to, text.data(), text.size());
  return to + text.size();
}

}  // namespace

char* FormatNumber(double value, char* to) {
  if (std::fabs(value) < kShortLimit) return FormatShort(std::bit_cast<std::uint64_t>(value), to);
  if (std::isnan(value)) return PutRightAligned(std::signbit(value) ? "-nan" : "nan", to);
  if (std::isinf(value)) return PutRightAligned(value < 0 ? "-inf" : "inf", to);
  char digits[kMostNumberCharacters];
  const std::to_chars_result end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, kDecimals);
  return PutRightAligned({digits, static_cast<std::size_t>(end.ptr - digits)}, to);
}

char* FormatNumber(std::int32_t value, char* to) {
  return std::to_chars(to, to + kMostNumberCharacters, value).ptr;
}
