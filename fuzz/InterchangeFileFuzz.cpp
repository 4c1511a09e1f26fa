// Any bytes as an interchange file: an error or paths.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.tmp");
  input.Write(data, size);
  try {
    formats::ReadInterchangeFile(input.Path());
  } catch (const formats::FileError&) {
  }
  return 0;
}
