#include "stock/WriteCompareBandsText.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "blocks/BlockWriter.h"
#include "stock/CompareBands.h"
#include "toolpaths/FormatNumber.h"

namespace {

// Two numbers at their widest and the words around them.
constexpr std::size_t kLongestLine = 2 * kMostNumberCharacters + 64;

char* Put(std::string_view text, char* to) {
  std::memcpy(to, text.data(), text.size());
  return to + text.size();
}

char* Put(std::int32_t value, char* to) { return FormatNumber(value, to); }
char* Put(double value, char* to) { return FormatNumber(value, to); }

// The parts of a line, one behind the other; a stream that takes no more is noticed by the writer
// alone.
template <class... Part>
void WriteLine(BlockWriter* out, Part... parts) {
  auto* line = reinterpret_cast<char*>(out->Room(kLongestLine));
  if (line == nullptr) return;
  char* end = line;
  ((end = Put(parts, end)), ...);
  *end++ = '\n';
  out->Advance(static_cast<std::size_t>(end - line));
}

std::int32_t Number(unsigned int colour) { return static_cast<std::int32_t>(colour); }

}  // namespace

void WriteCompareBandsText(const CompareBands& bands, FILE* stream) {
  BlockWriter out(stream);
  WriteLine(&out, "Stock model color ", Number(bands.stockColour));
  WriteLine(&out, "Number of divisions ", bands.divisions);
  for (std::int32_t i = 0; i < bands.divisions; ++i) {
    WriteLine(&out, "Color[", i, "] = ", Number(bands.colours[static_cast<std::size_t>(i)]));
  }
  for (std::int32_t i = 0; i < bands.divisions; ++i) {
    WriteLine(&out, "Distance[", i, "] = ", bands.distances[static_cast<std::size_t>(i)]);
  }
}
