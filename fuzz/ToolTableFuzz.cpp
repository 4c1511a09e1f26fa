// Any bytes as a tool table: an error or tools.
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "formats/FileError.h"
#include "formats/programs/ToolTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<char> text(data, data + size);
  try {
    formats::ParseToolTable(std::string_view(text.data(), text.size()), "fuzz", true);
  } catch (const formats::FileError&) {
  }
  return 0;
}
