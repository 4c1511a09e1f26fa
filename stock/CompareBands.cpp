#include "stock/CompareBands.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

#include "blocks/BlockReader.h"

namespace {

constexpr unsigned int kLastColour = 256;

// What the file has of the values; a value of which it has a part only stays as it is.
template <class Value>
void ReadValues(BlockReader* in, std::size_t count, Value* values) {
  while (count > 0) {
    const BlockReader::Records records = in->ReadRecords(sizeof(Value), count);
    if (records.count == 0) return;
    std::memcpy(values, records.bytes, records.count * sizeof(Value));
    values += records.count;
    count -= records.count;
  }
}

}  // namespace

bool ReadCompareBands(FILE* stream, CompareBands* bands) {
  BlockReader in(stream);
  if (!in.Read(&bands->stockColour) || !in.Read(&bands->divisions)) return false;
  if (bands->divisions < 1) return false;
  const auto count = static_cast<std::size_t>(bands->divisions);
  bands->colours.reset(new (std::nothrow) unsigned int[count]());
  bands->distances.reset(new (std::nothrow) double[count]());
  if (bands->colours == nullptr || bands->distances == nullptr) return false;
  ReadValues(&in, count, bands->colours.get());
  ReadValues(&in, count, bands->distances.get());
  return true;
}

bool HaveHostColours(const CompareBands& bands) {
  const unsigned int* colours = bands.colours.get();
  // Unsigned, so that a negative number is none either.
  return bands.stockColour <= kLastColour &&
         std::all_of(colours, colours + bands.divisions,
                     [](unsigned int colour) { return colour <= kLastColour; });
}
