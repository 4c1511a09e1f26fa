// Any bytes as a per-path file: an error or a path.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/PathInfoFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.tmp");
  input.Write(data, size);
  try {
    formats::ReadPathInfoFile(input.Path());
  } catch (const formats::FileError&) {
  }
  return 0;
}
