// Any bytes as an OFF file: an error or a mesh.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/meshes/OffFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.off");
  input.Write(data, size);
  try {
    formats::ReadOff(input.Path());
  } catch (const formats::FileError&) {
  }
  return 0;
}
