// Any bytes as the interchange file: the add-in's converter and the reader in formats/ must agree
// on whether it is valid. Only the delimiter is different, which the converter does not look at.
#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"
#include "toolpaths/DumpBinaryPathsText.h"

namespace {

bool IsValid(const std::string& path) {
  try {
    formats::ReadInterchangeFile(path);
    return true;
  } catch (const formats::FileError&) {
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("BinaryPaths.tmp");
  input.Write(data, size);
  const bool converted = DumpBinaryPathsText(input.AddInDirectory().c_str());
  constexpr std::string_view delimiter = "binary toolpaths";
  const bool marked =
      size >= delimiter.size() &&
      std::equal(delimiter.begin(), delimiter.end(), data,
                 [](char c, std::uint8_t byte) { return static_cast<std::uint8_t>(c) == byte; });
  if (marked && converted != IsValid(input.Path())) std::abort();
  return 0;
}
