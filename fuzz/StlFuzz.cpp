// Any bytes as an STL file: an error or a mesh.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/meshes/StlFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.stl");
  input.Write(data, size);
  try {
    formats::ReadStl(input.Path());
  } catch (const formats::FileError&) {
  }
  return 0;
}
