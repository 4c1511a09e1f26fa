#include "stock/CompareBands.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <utility>

#include "blocks/BlockReader.h"

namespace {

constexpr unsigned int kLastColour = 256;

// How many of the values the file has; one of which it has a part only is left as it was.
template <class Value>
std::size_t ReadInto(BlockReader* in, std::size_t count, Value* values) {
  std::size_t filled = 0;
  while (filled < count) {
    const BlockReader::Records records = in->ReadRecords(sizeof(Value), count - filled);
    if (records.count == 0) return filled;
    std::memcpy(values + filled, records.bytes, records.count * sizeof(Value));
    filled += records.count;
  }
  return filled;
}

// `count` values, zeros for those that the file does not have; null when there is no memory. Beyond
// kFreely the memory grows with what has arrived: a count that is so large and of which the file
// has not even half is answered like one for which there is no memory.
template <class Value>
std::unique_ptr<Value[]> ReadValues(BlockReader* in, std::size_t count) {
  constexpr std::size_t kFreely = 1U << 20U;
  std::unique_ptr<Value[]> values;
  std::size_t filled = 0;
  for (std::size_t room = 0; room < count;) {
    if (filled < room && 2 * filled < count) return nullptr;
    room = std::min(count, std::max(kFreely, 2 * room));
    std::unique_ptr<Value[]> grown(new (std::nothrow) Value[room]());
    if (grown == nullptr) return nullptr;
    std::copy_n(values.get(), filled, grown.get());
    values = std::move(grown);
    filled += ReadInto(in, room - filled, values.get() + filled);
  }
  return values;
}

}  // namespace

bool ReadCompareBands(FILE* stream, CompareBands* bands) {
  BlockReader in(stream);
  if (!in.Read(&bands->stockColour) || !in.Read(&bands->divisions)) return false;
  if (bands->divisions < 1) return false;
  const auto count = static_cast<std::size_t>(bands->divisions);
  bands->colours = ReadValues<unsigned int>(&in, count);
  if (bands->colours == nullptr) return false;
  bands->distances = ReadValues<double>(&in, count);
  return bands->distances != nullptr;
}

bool HaveHostColours(const CompareBands& bands) {
  const unsigned int* colours = bands.colours.get();
  // Unsigned, so that a negative number is none either.
  return bands.stockColour <= kLastColour &&
         std::all_of(colours, colours + bands.divisions,
                     [](unsigned int colour) { return colour <= kLastColour; });
}
